#pragma once

#include "sandbox/Tab.h"

#include <string>
#include <vector>

namespace norvane::sandbox {

class PdfCanvas;

/// Sets an agreement: running head and foot, headings, justified clauses, tables, and lines to fill in. It
/// writes downwards from the top of the page and begins a new page when something no longer fits. Fields are
/// answered as boxes on the current page, on which tabs are then placed.
class AgreementWriter {
  public:
    struct Heading {
        std::string title;     ///< of the document, in the running foot
        std::string company;   ///< at the left of the running head
        std::string reference; ///< at its right
        int totalPages = 0;    ///< for "Page 1 of 3"; 0 while it is not known yet
    };

    static constexpr double kLeft = 68;
    static constexpr double kRight = 544;
    static constexpr double kWidth = kRight - kLeft;

    /// Begins the first page at once; the canvas outlives the drawing.
    AgreementWriter(const PdfCanvas& canvas, Heading heading);

    /// Ends the last page; call it once, last.
    void finish();
    void pageBreak();
    /// Begins a new page unless that many points are left on this one.
    void need(double height);
    void advance(double height) { y_ += height; }
    int page() const { return page_; }
    double y() const { return y_; }

    void title(const std::string& text);
    void subtitle(const std::string& text);
    void heading(const std::string& text);
    /// A justified paragraph; what stands between two asterisks is bold.
    void paragraph(const std::string& text, double indent = 0);
    /// A paragraph with its number in the margin before it.
    void clause(const std::string& number, const std::string& text);
    void rule();
    /// One line of text at any place of the page; `align` 0 begins at x, 1 ends there, 0.5 centres on it.
    void textAt(double x, double y, const std::string& text, double size, bool bold = false,
                double align = 0);

    struct Column {
        std::string title;
        double width;
        bool rightAligned = false;
    };
    /// Repeats its head on every page that it reaches.
    void table(const std::vector<Column>& columns, const std::vector<std::vector<std::string>>& rows);
    /// Label and value beside each other, two pairs a line.
    void particulars(const std::vector<std::pair<std::string, std::string>>& pairs);

    /// A line to write on with its caption below, at the current height; takes kFieldHeight, which the caller
    /// advances by after the last field of a row.
    Box field(double x, double width, const std::string& caption);
    /// A line to sign on; takes kSignatureHeight.
    Box signature(double x, double width, const std::string& caption);
    /// A framed place for initials whose top right corner is at (right, top).
    Box initials(double right, double top, const std::string& caption);
    /// A box to tick and the text after it; advances by itself.
    Box checkbox(const std::string& text);

    static constexpr double kFieldHeight = 36;
    static constexpr double kSignatureHeight = 66;

    /// Puts a tab on the current page; `maximumLength` is for what the signer types.
    void place(Tab::Kind kind, const std::string& recipientId, const std::string& label, const Box& box,
               bool required = true, int maximumLength = 4000);
    void place(Tab tab);
    const std::vector<Tab>& tabs() const { return tabs_; }

  private:
    struct Run {
        std::string text;
        bool bold;
        double width;
    };
    struct Word {
        std::vector<Run> runs;
        double width = 0;
    };
    void beginPage();
    void endPage();
    void useSerif(double size, bool bold);
    void useSans(double size, bool bold);
    void sans(double x, double y, const std::string& text, double size, bool bold = false, double align = 0);
    double widthOf(const std::string& text);
    std::vector<Word> wordsOf(const std::string& text);
    void setParagraph(const std::vector<Word>& words, double left, double width);
    void setLine(const std::vector<Word>& words, std::size_t first, std::size_t last, double left,
                 double gap);
    void line(double fromX, double toX, double y, double thickness, double grey);
    void tableRow(const std::vector<Column>& columns, const std::vector<std::string>& cells, bool head);

    const PdfCanvas* canvas_;
    Heading heading_;
    int page_ = 0;
    double y_ = 0;
    std::vector<Tab> tabs_;
};

} // namespace norvane::sandbox
