#include "src/signing/annotations/TabLooks.h"

#include "src/signature/CairoCanvas.h"
#include "src/signing/annotations/LookCache.h"

#include <norvane/platform/Platform.h>

#include <algorithm>
#include <numbers>
#include <string>

namespace norvane {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr const char* kSignKey = "Tagging.TagName.Sign";
constexpr const char* kInitialKey = "Tagging.TagName.Initial";
constexpr const char* kOptionalKey = "Tagging.Optional";

constexpr Color hex(unsigned rgb) {
    return {(rgb >> 16 & 0xFF) / 255.0, (rgb >> 8 & 0xFF) / 255.0, (rgb & 0xFF) / 255.0, 1};
}

constexpr Color kDarkRed = hex(0x8A171C);
constexpr Color kRed = hex(0xC31D2B);
constexpr Color kBrightRed = hex(0xFF3434);
constexpr Color kPaleRed = hex(0xEBB4B7);
constexpr Color kGreen = hex(0x1AD416);
constexpr Color kBlue = hex(0x2A66E6);
constexpr Color kPaleBlue = hex(0xB7CFF6);
constexpr Color kInk = hex(0x262626);
constexpr Color kDarkGrey = hex(0x535353);
constexpr Color kGrey = hex(0x999999);
constexpr Color kLightGrey = hex(0xCCCCCC);
constexpr Color kPaleGrey = hex(0xD9D9D9);
constexpr Color kNearlyWhite = hex(0xF4F4F4);

struct Scheme {
    Color fill;
    Color outline;
    Color label;
};

/// Fields still to be signed by the current recipient are full of colour, optional ones pale.
Scheme badgeSchemeOf(const TabLook& look) {
    if (look.isErroneous) return {kPaleRed, kRed, kDarkRed};
    if (!look.isEditable) return {kNearlyWhite, kLightGrey, kGrey};
    if (!look.isRequired) return {kPaleBlue, kBlue, kBlue};
    return {kBlue, kBlue, kNearlyWhite};
}

Scheme markSchemeOf(const TabLook& look) {
    if (look.isErroneous) return {kPaleRed, kRed, kInk};
    if (!look.isEditable) return {kNearlyWhite, kGrey, kDarkGrey};
    return {kNearlyWhite, kBlue, kInk};
}

void roundedRectangle(cairo_t* context, const Rect& r, double radius) {
    cairo_new_sub_path(context);
    cairo_arc(context, r.x + r.width - radius, r.y + radius, radius, -kPi / 2, 0);
    cairo_arc(context, r.x + r.width - radius, r.y + r.height - radius, radius, 0, kPi / 2);
    cairo_arc(context, r.x + radius, r.y + r.height - radius, radius, kPi / 2, kPi);
    cairo_arc(context, r.x + radius, r.y + radius, radius, kPi, kPi * 3 / 2);
    cairo_close_path(context);
}

/// Fills the current path and draws its outline; a highlight lies around the outline in green.
void fillAndOutline(CairoCanvas& canvas, const TabLook& look, const Scheme& scheme) {
    cairo_t* context = canvas.context();
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    canvas.setColor(scheme.fill);
    cairo_fill_preserve(context);
    canvas.setColor(look.isHighlighted ? kGreen : scheme.outline);
    cairo_set_line_width(context,
                         look.isHighlighted ? look.strokeWidth + look.highlightWidth : look.strokeWidth);
    cairo_stroke(context);
}

/// One line centred in the rectangle, set smaller where it would be wider.
void drawText(CairoCanvas& canvas, const std::string& text, const Rect& rect, const Color& color,
              const char* fontName, double fontSize) {
    cairo_t* context = canvas.context();
    cairo_select_font_face(context, fontName, CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_BOLD);
    cairo_set_font_size(context, fontSize);
    cairo_text_extents_t extents{};
    cairo_text_extents(context, text.c_str(), &extents);
    const double used = extents.x_advance;
    const double size = used > rect.width ? fontSize * rect.width / used : fontSize;
    cairo_set_font_size(context, size);
    cairo_text_extents(context, text.c_str(), &extents);
    cairo_font_extents_t font{};
    cairo_font_extents(context, &font);
    canvas.setColor(color);
    // Centred on the capitals' height, as most labels have no descenders.
    const double capitals = font.ascent * 0.77;
    cairo_move_to(context, rect.x + (rect.width - extents.x_advance) / 2,
                  rect.y + (rect.height + capitals) / 2);
    cairo_show_text(context, text.c_str());
    cairo_new_path(context);
}

/// A rounded badge whose lower edge runs out into an arrow that points at the line to sign on.
void badgePath(cairo_t* context, const Rect& f, double bottom, double radius) {
    const double center = f.x + f.width / 2;
    const double stem = f.width * 0.09;
    const double head = f.width * 0.22;
    const double neck = bottom + (f.y + f.height - bottom) * 0.35;
    cairo_new_sub_path(context);
    cairo_arc(context, f.x + f.width - radius, f.y + radius, radius, -kPi / 2, 0);
    cairo_arc(context, f.x + f.width - radius, bottom - radius, radius, 0, kPi / 2);
    cairo_line_to(context, center + stem, bottom);
    cairo_line_to(context, center + stem, neck);
    cairo_line_to(context, center + head, neck);
    cairo_line_to(context, center, f.y + f.height);
    cairo_line_to(context, center - head, neck);
    cairo_line_to(context, center - stem, neck);
    cairo_line_to(context, center - stem, bottom);
    cairo_arc(context, f.x + radius, bottom - radius, radius, kPi / 2, kPi);
    cairo_arc(context, f.x + radius, f.y + radius, radius, kPi, kPi * 3 / 2);
    cairo_close_path(context);
}

void drawBadge(CairoCanvas& canvas, const TabLook& look, const char* labelKey) {
    constexpr const char* kBoldFont = "DejaVu Sans";
    const Rect& f = look.frame;
    const Scheme scheme = badgeSchemeOf(look);
    const double bottom = f.y + f.height * 0.62;
    const double radius = std::min(f.width, f.height) * 0.14;
    badgePath(canvas.context(), f, bottom, radius);
    fillAndOutline(canvas, look, scheme);

    const StringTable& strings = *Platform::current().strings;
    const double margin = f.width * 0.1;
    const double height = bottom - f.y;
    const Rect inside{f.x + margin, f.y, f.width - 2 * margin, height};
    if (look.isRequired) {
        drawText(canvas, strings.text(labelKey), inside, scheme.label, kBoldFont, height * 0.52);
    } else {
        drawText(canvas, strings.text(labelKey),
                 {inside.x, inside.y + height * 0.08, inside.width, height * 0.5}, scheme.label, kBoldFont,
                 height * 0.42);
        drawText(canvas, strings.text(kOptionalKey),
                 {inside.x, inside.y + height * 0.56, inside.width, height * 0.32}, scheme.label, kBoldFont,
                 height * 0.27);
    }
}

void drawSignHere(CairoCanvas& canvas, const TabLook& look) { drawBadge(canvas, look, kSignKey); }

void drawInitialHere(CairoCanvas& canvas, const TabLook& look) { drawBadge(canvas, look, kInitialKey); }

/// A red dot in the corner of a field that waits for a choice.
void drawRequiredMark(CairoCanvas& canvas, const TabLook& look) {
    if (!look.isRequired || look.isChecked || !look.isEditable) return;
    const double radius = look.frame.width * 0.11;
    canvas.setColor(kBrightRed);
    cairo_arc(canvas.context(), look.frame.x + look.frame.width - radius * 2.2, look.frame.y + radius * 2.2,
              radius, 0, 2 * kPi);
    cairo_fill(canvas.context());
}

/// The square in the middle of the frame.
Rect squareOf(const Rect& f) {
    const double side = std::min(f.width, f.height);
    return {f.x + (f.width - side) / 2, f.y + (f.height - side) / 2, side, side};
}

void drawChecked(CairoCanvas& canvas, const TabLook& look) {
    cairo_t* context = canvas.context();
    const Scheme scheme = markSchemeOf(look);
    const Rect box = squareOf(look.frame);
    roundedRectangle(context, box, box.width * 0.18);
    fillAndOutline(canvas, look, scheme);
    if (look.isChecked) {
        canvas.setColor(scheme.label);
        cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
        cairo_set_line_width(context, box.width * 0.13);
        cairo_move_to(context, box.x + box.width * 0.23, box.y + box.height * 0.52);
        cairo_line_to(context, box.x + box.width * 0.43, box.y + box.height * 0.72);
        cairo_line_to(context, box.x + box.width * 0.78, box.y + box.height * 0.28);
        cairo_stroke(context);
    }
    drawRequiredMark(canvas, look);
}

void drawRadio(CairoCanvas& canvas, const TabLook& look) {
    cairo_t* context = canvas.context();
    const Scheme scheme = markSchemeOf(look);
    const Rect box = squareOf(look.frame);
    const double radius = box.width / 2;
    cairo_arc(context, box.x + radius, box.y + radius, radius, 0, 2 * kPi);
    fillAndOutline(canvas, look, scheme);
    canvas.setColor(look.isChecked ? scheme.label : kPaleGrey);
    cairo_arc(context, box.x + radius, box.y + radius, radius * (look.isChecked ? 0.52 : 0.2), 0, 2 * kPi);
    cairo_fill(context);
}

Image drawTabLook(NVMTagType type, const TabLook& look, double scale) {
    CairoCanvas canvas(look.size, scale);
    switch (type) {
    case NVMTabTypeSignHere:
        drawSignHere(canvas, look);
        break;
    case NVMTabTypeInitialHere:
        drawInitialHere(canvas, look);
        break;
    case NVMTabTypeCheckbox:
        drawChecked(canvas, look);
        break;
    case NVMTabTypeRadio:
        drawRadio(canvas, look);
        break;
    default:
        break;
    }
    return canvas.image();
}

/// Everything that a look depends on, the texts of the user's language included.
std::string keyOf(NVMTagType type, const TabLook& look, double scale) {
    const StringTable& strings = *Platform::current().strings;
    std::string key =
        strings.text(kSignKey) + '\n' + strings.text(kInitialKey) + '\n' + strings.text(kOptionalKey);
    for (const double number : {static_cast<double>(type), scale, look.size.width, look.size.height,
                                look.frame.x, look.frame.y, look.strokeWidth, look.highlightWidth})
        key += '\n' + std::to_string(number);
    for (const bool flag :
         {look.isEditable, look.isRequired, look.isHighlighted, look.isErroneous, look.isChecked})
        key += flag ? '1' : '0';
    return key;
}

} // namespace

Image tabLook(NVMTagType type, const TabLook& look, double scale) {
    static LookCache cache;
    return cache.image(keyOf(type, look, scale), [&] { return drawTabLook(type, look, scale); });
}

} // namespace norvane
