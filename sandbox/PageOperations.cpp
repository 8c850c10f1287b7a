#include "sandbox/Documents.h"
#include "sandbox/PdfPages.h"
#include "sandbox/Text.h"

#include <cairo.h>

#include <memory>

namespace norvane::sandbox {

namespace {

Answer unknownPage() { return errorAnswer(404, "PAGE_DOES_NOT_EXIST", "The document has no such page."); }

/// The number of the page that the path names; nothing when the document has no such page.
std::optional<std::size_t> pageNumber(const Call& call, std::string_view pdf) {
    const auto number = wholeNumber(call["pageNumber"]);
    if (!number || *number == 0 || *number > pageSizes(pdf).size()) return std::nullopt;
    return static_cast<std::size_t>(*number);
}

Answer pages(const Call& call) {
    const auto found = documentOf(call);
    if (!found) return unknownDocument();
    Json::Array list;
    for (const PageSize& size : pageSizes(found->pdf)) {
        const std::string number = std::to_string(list.size() + 1);
        list.push_back(Json::object({{"pageId", number},
                                     {"sequence", number},
                                     {"width", std::to_string(size.width)},
                                     {"height", std::to_string(size.height)},
                                     {"dpi", "72"}}));
    }
    return pageAnswer(call.request, "pages", list, "/documents/" + found->id + "/pages");
}

cairo_status_t append(void* to, const unsigned char* bytes, unsigned length) {
    static_cast<std::string*>(to)->append(reinterpret_cast<const char*>(bytes), length);
    return CAIRO_STATUS_SUCCESS;
}

/// A blank sheet of the page's size with its number: the sandbox draws PDFs but does not render them.
std::string standIn(const PageSize& size, const std::string& number) {
    const std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)> surface(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, size.width, size.height), cairo_surface_destroy);
    const std::unique_ptr<cairo_t, void (*)(cairo_t*)> context(cairo_create(surface.get()), cairo_destroy);
    cairo_set_source_rgb(context.get(), 1, 1, 1);
    cairo_paint(context.get());
    cairo_set_source_rgb(context.get(), 0.5, 0.5, 0.5);
    cairo_rectangle(context.get(), 0.5, 0.5, size.width - 1, size.height - 1);
    cairo_stroke(context.get());
    cairo_set_font_size(context.get(), 48);
    cairo_move_to(context.get(), size.width / 2.0, size.height / 2.0);
    cairo_show_text(context.get(), number.c_str());
    std::string png;
    cairo_surface_write_to_png_stream(surface.get(), append, &png);
    return png;
}

Answer pageImage(const Call& call) {
    const auto found = documentOf(call);
    if (!found) return unknownDocument();
    const auto number = pageNumber(call, found->pdf);
    if (!number) return unknownPage();
    Answer answer;
    answer.contentType = "image/png";
    answer.body = standIn(pageSizes(found->pdf)[*number - 1], std::to_string(*number));
    return answer;
}

/// Changes the page that the path names by `change(pdf, number)`, which answers the document's new bytes.
Answer changePage(const Call& call,
                  const std::function<Answer(std::string& pdf, std::size_t number)>& change) {
    return changeDocuments(call, [&](std::vector<Document>& documents) {
        for (Document& document : documents) {
            if (document.id != call["documentId"]) continue;
            const auto number = pageNumber(call, document.pdf);
            return number ? change(document.pdf, *number) : unknownPage();
        }
        return unknownDocument();
    });
}

/// {"rotate": "left"} or "right": a quarter turn.
Answer rotatePage(const Call& call) {
    Json body;
    if (auto refusal = readBody(call.request, body)) return *refusal;
    const std::string& way = body.text("rotate");
    if (way != "left" && way != "right") return malformed("rotate is neither left nor right.");
    return changePage(call, [&](std::string& pdf, std::size_t number) {
        pdf = withPageTurned(pdf, number, way == "left" ? -90 : 90);
        return jsonAnswer(Json::Object());
    });
}

/// The page's tabs go with it, those behind it move up.
Answer deletePage(const Call& call) {
    Answer answer = changePage(call, [&](std::string& pdf, std::size_t number) {
        if (pageSizes(pdf).size() == 1) return malformed("A document keeps its last page.");
        pdf = withoutPage(pdf, number);
        return jsonAnswer(Json::Object());
    });
    if (answer.status >= 400) return answer;
    const auto gone = *wholeNumber(call["pageNumber"]);
    changeRecipients(call, [&](Json& recipients) {
        eraseTabs(recipients, [&](const std::string& documentId, Json& tab) {
            const auto page = wholeNumber(tab.text("pageNumber"));
            if (documentId != call["documentId"] || !page) return false;
            if (*page > gone) tab.set("pageNumber", std::to_string(*page - 1));
            return *page == gone;
        });
        return Answer();
    });
    return answer;
}

#define PAGES "/documents/{documentId}/pages"
constexpr Route kPageRoutes[] = {
    {"GET", "/envelopes/{envelopeId}" PAGES, pages},
    {"GET", "/envelopes/{envelopeId}" PAGES "/{pageNumber}/page_image", pageImage},
    {"PUT", "/envelopes/{envelopeId}" PAGES "/{pageNumber}/page_image", rotatePage},
    {"DELETE", "/envelopes/{envelopeId}" PAGES "/{pageNumber}", deletePage},
    {"GET", "/templates/{templateId}" PAGES, pages},
    {"GET", "/templates/{templateId}" PAGES "/{pageNumber}/page_image", pageImage},
    {"PUT", "/templates/{templateId}" PAGES "/{pageNumber}/page_image", rotatePage},
    {"DELETE", "/templates/{templateId}" PAGES "/{pageNumber}", deletePage},
};
#undef PAGES

} // namespace

void addPageOperations(Router& router, const Operations& operations) {
    addRoutes(router, operations, kPageRoutes);
}

} // namespace norvane::sandbox
