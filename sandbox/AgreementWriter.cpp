#include "sandbox/AgreementWriter.h"

#include "sandbox/PdfCanvas.h"
#include "sandbox/Text.h"

#include <utility>

namespace norvane::sandbox {

namespace {

constexpr double kTop = 84;
constexpr double kBottom = 726;
constexpr double kBodySize = 9.4;
constexpr double kLeading = 13.6;
constexpr double kClauseIndent = 26;
constexpr double kTableSize = 8.2;
constexpr double kRowHeight = 15.2;

void ink(cairo_t* context) { cairo_set_source_rgb(context, 0.10, 0.11, 0.13); }
void accent(cairo_t* context) { cairo_set_source_rgb(context, 0.11, 0.23, 0.37); }
void faint(cairo_t* context) { cairo_set_source_rgb(context, 0.42, 0.44, 0.48); }

/// Curls the apostrophes.
std::string typographic(const std::string& text) {
    std::string result;
    for (const char character : text)
        result += character == '\'' ? std::string("\xe2\x80\x99") : std::string(1, character);
    return result;
}

} // namespace

AgreementWriter::AgreementWriter(const PdfCanvas& canvas, Heading heading)
    : canvas_(&canvas)
    , heading_(std::move(heading)) {
    beginPage();
}

void AgreementWriter::beginPage() {
    ++page_;
    faint(canvas_->context());
    sans(kLeft, 48, heading_.company, 8, true);
    sans(kRight, 48, heading_.reference, 8, false, 1);
    line(kLeft, kRight, 55, 0.6, 0.55);
    y_ = kTop;
}

void AgreementWriter::endPage() {
    line(kLeft, kRight, 744, 0.4, 0.7);
    faint(canvas_->context());
    sans(kLeft, 756, heading_.title, 7.6);
    sans(kRight, 756, "Page " + std::to_string(page_) + " of " + std::to_string(heading_.totalPages), 7.6,
         false, 1);
    cairo_show_page(canvas_->context());
}

void AgreementWriter::finish() { endPage(); }

void AgreementWriter::pageBreak() {
    endPage();
    beginPage();
}

void AgreementWriter::need(double height) {
    if (y_ + height > kBottom) pageBreak();
}

void AgreementWriter::useSerif(double size, bool bold) {
    cairo_select_font_face(canvas_->context(), "DejaVu Serif Condensed", CAIRO_FONT_SLANT_NORMAL,
                           bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(canvas_->context(), size);
}

void AgreementWriter::useSans(double size, bool bold) {
    cairo_select_font_face(canvas_->context(), "DejaVu Sans Condensed", CAIRO_FONT_SLANT_NORMAL,
                           bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(canvas_->context(), size);
}

double AgreementWriter::widthOf(const std::string& text) {
    cairo_text_extents_t extents;
    cairo_text_extents(canvas_->context(), text.c_str(), &extents);
    return extents.x_advance;
}

void AgreementWriter::line(double fromX, double toX, double y, double thickness, double grey) {
    cairo_set_source_rgb(canvas_->context(), grey, grey, grey);
    cairo_set_line_width(canvas_->context(), thickness);
    cairo_move_to(canvas_->context(), fromX, y);
    cairo_line_to(canvas_->context(), toX, y);
    cairo_stroke(canvas_->context());
}

void AgreementWriter::textAt(double x, double y, const std::string& text, double size, bool bold,
                             double align) {
    ink(canvas_->context());
    sans(x, y, text, size, bold, align);
}

void AgreementWriter::sans(double x, double y, const std::string& text, double size, bool bold,
                           double align) {
    useSans(size, bold);
    const std::string shown = typographic(text);
    cairo_move_to(canvas_->context(), x - align * widthOf(shown), y);
    cairo_show_text(canvas_->context(), shown.c_str());
}

void AgreementWriter::title(const std::string& text) {
    accent(canvas_->context());
    useSerif(19, true);
    cairo_move_to(canvas_->context(), kLeft, y_ + 16);
    cairo_show_text(canvas_->context(), text.c_str());
    y_ += 26;
}

void AgreementWriter::subtitle(const std::string& text) {
    faint(canvas_->context());
    sans(kLeft, y_ + 8, text, 9);
    y_ += 24;
}

void AgreementWriter::heading(const std::string& text) {
    need(3 * kLeading + 18);
    y_ += 5;
    accent(canvas_->context());
    sans(kLeft, y_ + 10, text, 10.2, true);
    y_ += 19;
}

void AgreementWriter::rule() {
    line(kLeft, kRight, y_, 0.5, 0.6);
    y_ += 10;
}

std::vector<AgreementWriter::Word> AgreementWriter::wordsOf(const std::string& text) {
    std::vector<Word> words;
    bool bold = false;
    for (const std::string& piece : split(typographic(text), ' ')) {
        Word& word = words.emplace_back();
        const auto runs = split(piece, '*');
        for (std::size_t index = 0; index < runs.size(); ++index) {
            if (index > 0) bold = !bold;
            useSerif(kBodySize, bold);
            word.runs.push_back({runs[index], bold, widthOf(runs[index])});
            word.width += word.runs.back().width;
        }
    }
    return words;
}

void AgreementWriter::setLine(const std::vector<Word>& words, std::size_t first, std::size_t last,
                              double left, double gap) {
    double x = left;
    for (std::size_t index = first; index < last; ++index, x += gap)
        for (const Run& run : words[index].runs) {
            useSerif(kBodySize, run.bold);
            cairo_move_to(canvas_->context(), x, y_ + kBodySize);
            cairo_show_text(canvas_->context(), run.text.c_str());
            x += run.width;
        }
}

void AgreementWriter::setParagraph(const std::vector<Word>& words, double left, double width) {
    useSerif(kBodySize, false);
    const double blank = widthOf(" ");
    for (std::size_t first = 0; first < words.size();) {
        std::size_t last = first;
        double filled = 0;
        while (last < words.size() && filled + words[last].width <= width)
            filled += words[last++].width + blank;
        if (last == first) filled += words[last++].width + blank;
        const double slack = width - (filled - blank);
        const bool ends = last == words.size();
        const double gaps = static_cast<double>(last - first) - 1;
        need(kLeading);
        ink(canvas_->context());
        setLine(words, first, last, left, ends || gaps < 1 ? blank : blank + slack / gaps);
        y_ += kLeading;
        first = last;
    }
}

void AgreementWriter::paragraph(const std::string& text, double indent) {
    setParagraph(wordsOf(text), kLeft + indent, kWidth - indent);
    y_ += 5;
}

void AgreementWriter::clause(const std::string& number, const std::string& text) {
    need(2 * kLeading);
    ink(canvas_->context());
    useSerif(kBodySize, false);
    cairo_move_to(canvas_->context(), kLeft, y_ + kBodySize);
    cairo_show_text(canvas_->context(), number.c_str());
    paragraph(text, kClauseIndent);
}

void AgreementWriter::tableRow(const std::vector<Column>& columns, const std::vector<std::string>& cells,
                               bool head) {
    if (head) {
        cairo_set_source_rgb(canvas_->context(), 0.91, 0.93, 0.95);
        cairo_rectangle(canvas_->context(), kLeft, y_, kWidth, kRowHeight);
        cairo_fill(canvas_->context());
    }
    double x = kLeft;
    for (std::size_t index = 0; index < columns.size() && index < cells.size(); ++index) {
        const Column& column = columns[index];
        ink(canvas_->context());
        const double edge = column.rightAligned ? x + column.width - 5 : x + 5;
        sans(edge, y_ + 10.6, cells[index], kTableSize, head, column.rightAligned ? 1 : 0);
        x += column.width;
    }
    line(kLeft, kRight, y_ + kRowHeight, head ? 0.7 : 0.35, head ? 0.35 : 0.78);
    y_ += kRowHeight;
}

void AgreementWriter::table(const std::vector<Column>& columns,
                            const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::string> titles;
    titles.reserve(columns.size());
    for (const Column& column : columns)
        titles.push_back(column.title);
    need(3 * kRowHeight);
    tableRow(columns, titles, true);
    for (const auto& row : rows) {
        const int before = page_;
        need(kRowHeight);
        if (page_ != before) tableRow(columns, titles, true);
        tableRow(columns, row, false);
    }
    y_ += 12;
}

void AgreementWriter::particulars(const std::vector<std::pair<std::string, std::string>>& pairs) {
    constexpr double kColumn = kWidth / 2;
    for (std::size_t index = 0; index < pairs.size(); ++index) {
        if (index % 2 == 0) need(kRowHeight);
        const double x = kLeft + (index % 2 == 0 ? 0 : kColumn);
        faint(canvas_->context());
        sans(x, y_ + 10, pairs[index].first, 8);
        ink(canvas_->context());
        sans(x + 86, y_ + 10, pairs[index].second, 8.6, true);
        if (index % 2 == 1 || index + 1 == pairs.size()) y_ += kRowHeight;
    }
    y_ += 8;
}

Box AgreementWriter::field(double x, double width, const std::string& caption) {
    line(x, x + width, y_ + 19.5, 0.6, 0.25);
    faint(canvas_->context());
    sans(x, y_ + 28.5, caption, 7.2);
    return {x + 2, y_ + 0.5, width - 4, kTextHeight};
}

Box AgreementWriter::signature(double x, double width, const std::string& caption) {
    line(x, x + width, y_ + 49, 0.6, 0.25);
    faint(canvas_->context());
    sans(x, y_ + 58, caption, 7.2);
    // A wide signature hangs from the top of its box: lower down it stands nearer to the line.
    return {x + 8, y_ + 18, kSignatureSize.width, kSignatureSize.height};
}

Box AgreementWriter::initials(double right, double top, const std::string& caption) {
    constexpr double kFrameWidth = 44;
    constexpr double kFrameHeight = 54;
    cairo_set_source_rgb(canvas_->context(), 0.45, 0.45, 0.45);
    cairo_set_line_width(canvas_->context(), 0.5);
    cairo_rectangle(canvas_->context(), right - kFrameWidth, top, kFrameWidth, kFrameHeight);
    cairo_stroke(canvas_->context());
    faint(canvas_->context());
    sans(right - kFrameWidth - 6, top + kFrameHeight - 3, caption, 7.2, false, 1);
    return {right - kFrameWidth + 4, top + 2, kInitialsSize.width, kInitialsSize.height};
}

Box AgreementWriter::checkbox(const std::string& text) {
    need(2 * kLeading);
    y_ += 2;
    const Box box{kLeft + 1, y_ - 3, kCheckboxSide, kCheckboxSide};
    cairo_set_source_rgb(canvas_->context(), 0.25, 0.25, 0.25);
    cairo_set_line_width(canvas_->context(), 0.7);
    cairo_rectangle(canvas_->context(), box.x + 3, box.y + 3, kCheckboxSide - 6, kCheckboxSide - 6);
    cairo_stroke(canvas_->context());
    paragraph(text, kClauseIndent);
    return box;
}

void AgreementWriter::place(Tab::Kind kind, const std::string& recipientId, const std::string& label,
                            const Box& box, bool required, int maximumLength) {
    Tab tab;
    tab.kind = kind;
    tab.recipientId = recipientId;
    tab.label = label;
    tab.box = box;
    tab.required = required;
    tab.maximumLength = maximumLength;
    place(std::move(tab));
}

void AgreementWriter::place(Tab tab) {
    tab.page = page_;
    tabs_.push_back(std::move(tab));
}

} // namespace norvane::sandbox
