#include <norvane/platform/DateFormat.h>

#include <unicode/datefmt.h>

#include <algorithm>
#include <memory>

namespace norvane {
namespace {

/// Takes apart a text from its front; every step says whether it found what it looked for.
class Reader {
  public:
    explicit Reader(std::string_view text)
        : rest_(text) {}

    bool digits(std::size_t count, int& number) {
        if (rest_.size() < count) return false;
        number = 0;
        for (std::size_t i = 0; i < count; ++i) {
            if (!isDigit(rest_[i])) return false;
            number = number * 10 + (rest_[i] - '0');
        }
        rest_.remove_prefix(count);
        return true;
    }

    bool take(char character) {
        if (!rest_.starts_with(character)) return false;
        rest_.remove_prefix(1);
        return true;
    }

    /// The digits after a point, cut to thousandths.
    bool fraction(int& thousandths) {
        thousandths = 0;
        if (!take('.')) return true;
        int scale = 100;
        std::size_t count = 0;
        for (; count < rest_.size() && isDigit(rest_[count]); ++count, scale /= 10) {
            thousandths += scale * (rest_[count] - '0');
        }
        rest_.remove_prefix(count);
        return count <= 9;
    }

    /// "Z", "+hh", "+hhmm" or "+hh:mm".
    bool zone(int& offsetMinutes) {
        offsetMinutes = 0;
        if (take('Z') || take('z')) return true;
        const bool west = rest_.starts_with('-');
        if (!take('+') && !take('-')) return false;
        int hours = 0;
        int minutes = 0;
        if (!digits(2, hours)) return false;
        if (!atEnd() && ((take(':'), !digits(2, minutes)) || minutes > 59)) return false;
        offsetMinutes = (hours * 60 + minutes) * (west ? -1 : 1);
        return hours < 24;
    }

    bool atEnd() const { return rest_.empty(); }

  private:
    static bool isDigit(char character) { return character >= '0' && character <= '9'; }

    std::string_view rest_;
};

void putDigits(char* at, int count, int number) {
    for (int i = count - 1; i >= 0; --i, number /= 10)
        at[i] = static_cast<char>('0' + number % 10);
}

/// A formatter is dear to make and not to be shared between threads, so each thread keeps its own.
template <icu::DateFormat::EStyle DATE_STYLE>
icu::DateFormat& formatter() {
    thread_local const std::unique_ptr<icu::DateFormat> kept = [] {
        std::unique_ptr<icu::DateFormat> made(
            icu::DateFormat::createDateTimeInstance(DATE_STYLE, icu::DateFormat::kShort));
        made->setLenient(false);
        return made;
    }();
    return *kept;
}

std::string format(icu::DateFormat& formatter, Date date) {
    icu::UnicodeString text;
    formatter.format(static_cast<UDate>(date.time_since_epoch().count()), text);
    std::string result;
    text.toUTF8String(result);
    return result;
}

} // namespace

std::optional<Date> parseIso8601(std::string_view text) {
    using namespace std::chrono;
    Reader reader(text);
    int yearNumber = 0, monthNumber = 0, dayNumber = 0, hour = 0, minute = 0, second = 0, thousandths = 0,
        offset = 0;
    const bool complete = reader.digits(4, yearNumber) && reader.take('-') && reader.digits(2, monthNumber) &&
                          reader.take('-') && reader.digits(2, dayNumber) && reader.take('T') &&
                          reader.digits(2, hour) && reader.take(':') && reader.digits(2, minute) &&
                          reader.take(':') && reader.digits(2, second) && reader.fraction(thousandths) &&
                          reader.zone(offset) && reader.atEnd();
    if (!complete || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    const year_month_day date(year(yearNumber), month(static_cast<unsigned>(monthNumber)),
                              day(static_cast<unsigned>(dayNumber)));
    if (!date.ok()) return std::nullopt;
    return sys_days(date) + hours(hour) + minutes(minute - offset) + seconds(second) +
           milliseconds(thousandths);
}

std::string formatIso8601(Date date) {
    using namespace std::chrono;
    constexpr Date kFirst = sys_days(year(0) / 1 / 1);
    constexpr Date kLast = sys_days(year(10000) / 1 / 1) - milliseconds(1);
    date = std::clamp(date, kFirst, kLast);
    const sys_days dayStart = floor<days>(date);
    const year_month_day day(dayStart);
    const hh_mm_ss time(date - dayStart);
    std::string text = "0000-00-00T00:00:00.000Z";
    putDigits(&text[0], 4, static_cast<int>(day.year()));
    putDigits(&text[5], 2, static_cast<int>(static_cast<unsigned>(day.month())));
    putDigits(&text[8], 2, static_cast<int>(static_cast<unsigned>(day.day())));
    putDigits(&text[11], 2, static_cast<int>(time.hours().count()));
    putDigits(&text[14], 2, static_cast<int>(time.minutes().count()));
    putDigits(&text[17], 2, static_cast<int>(time.seconds().count()));
    putDigits(&text[20], 3, static_cast<int>(time.subseconds().count()));
    return text;
}

std::string mediumDateShortTime(Date date) { return format(formatter<icu::DateFormat::kMedium>(), date); }

std::optional<Date> parseMediumDateShortTime(std::string_view text) {
    constexpr std::size_t kLongest = 256;
    if (text.size() > kLongest) return std::nullopt;
    const auto unicode =
        icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
    icu::ParsePosition position;
    const UDate date = formatter<icu::DateFormat::kMedium>().parse(unicode, position);
    if (position.getErrorIndex() >= 0 || position.getIndex() != unicode.length()) return std::nullopt;
    return Date(std::chrono::milliseconds(static_cast<std::int64_t>(date)));
}

std::string shortDateShortTime(Date date) { return format(formatter<icu::DateFormat::kShort>(), date); }

} // namespace norvane
