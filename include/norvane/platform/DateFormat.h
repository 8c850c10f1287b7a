#pragma once

#include <norvane/platform/Date.h>

#include <optional>
#include <string>
#include <string_view>

namespace norvane {

/// Reads a date of the wire: "2024-02-29T23:59:59.1234567Z", with 0 to 9 digits of fraction (cut to
/// milliseconds) and "Z" or an offset ("+02:00", "-0530", "+01"). Nothing for anything else, a missing
/// zone or a day that does not exist included.
std::optional<Date> parseIso8601(std::string_view text);

/// "2024-02-29T23:59:59.123Z": UTC, always three digits of fraction. Years outside 0 to 9999 are held at the
/// nearest end.
std::string formatIso8601(Date date);

/// The system's locale and time zone in its medium date and short time style ("Feb 29, 2024, 11:59 PM").
std::string mediumDateShortTime(Date date);
/// The date that such a text says, by the minute; nothing when the whole text is not in that style.
std::optional<Date> parseMediumDateShortTime(std::string_view text);

/// The system's locale and time zone in its short date and short time style ("2/29/24, 11:59 PM").
std::string shortDateShortTime(Date date);

} // namespace norvane
