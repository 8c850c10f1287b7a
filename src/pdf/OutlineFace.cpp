#include "src/pdf/TextFace.h"

#include <cairo.h>
#include <unicode/ubidi.h>
#include <unicode/unistr.h>
#include <unicode/ushape.h>

#include <array>
#include <memory>
#include <vector>

namespace norvane {
namespace {

/// Tried in order for each character. The system stands in for a family that is not installed.
constexpr std::array<const char*, 5> kFamilies{"DejaVu Sans", "Noto Sans", "Noto Sans CJK SC",
                                               "Droid Sans Fallback", "Noto Sans Devanagari"};
constexpr double kUnits = 1000;

/// The line in the order in which it is drawn from left to right, Arabic letters in their joined forms.
icu::UnicodeString inVisualOrder(const std::string& line) {
    const icu::UnicodeString logical = icu::UnicodeString::fromUTF8(line);
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString shaped;
    const int32_t shapedCapacity = logical.length() * 2 + 16;
    const int32_t shapedLength = u_shapeArabic(
        logical.getBuffer(), logical.length(), shaped.getBuffer(shapedCapacity), shapedCapacity,
        U_SHAPE_LETTERS_SHAPE | U_SHAPE_TEXT_DIRECTION_LOGICAL | U_SHAPE_LENGTH_GROW_SHRINK, &status);
    shaped.releaseBuffer(U_SUCCESS(status) ? shapedLength : 0);
    if (U_FAILURE(status)) return logical;

    const std::unique_ptr<UBiDi, decltype(&ubidi_close)> bidi(ubidi_open(), ubidi_close);
    ubidi_setPara(bidi.get(), shaped.getBuffer(), shaped.length(), UBIDI_DEFAULT_LTR, nullptr, &status);
    icu::UnicodeString visual;
    const int32_t capacity = shaped.length() * 2 + 16;
    const int32_t length = ubidi_writeReordered(bidi.get(), visual.getBuffer(capacity), capacity,
                                                UBIDI_DO_MIRRORING | UBIDI_REMOVE_BIDI_CONTROLS, &status);
    visual.releaseBuffer(U_SUCCESS(status) ? length : 0);
    return U_SUCCESS(status) ? visual : shaped;
}

/// Draws nothing itself: gives glyph outlines of `kUnits` points size, y downwards.
class OutlineContext {
  public:
    OutlineContext()
        : surface_(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1), cairo_surface_destroy)
        , context_(cairo_create(surface_.get()), cairo_destroy) {
        const std::unique_ptr<cairo_font_options_t, decltype(&cairo_font_options_destroy)> options(
            cairo_font_options_create(), cairo_font_options_destroy);
        cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
        cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
        cairo_set_font_options(context_.get(), options.get());
        cairo_set_font_size(context_.get(), kUnits);
        cairo_set_tolerance(context_.get(), 1);
    }

    cairo_t* get() const { return context_.get(); }

    /// Appends the character at the pen and moves the pen; the outline goes to the context's path.
    void append(const std::string& character, double& x) const {
        for (const char* family : kFamilies) {
            cairo_select_font_face(get(), family, CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
            if (appendGlyphs(character, x, false)) return;
        }
        // No font at hand has it: the first family's mark for that, so that something shows.
        cairo_select_font_face(get(), kFamilies.front(), CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
        appendGlyphs(character, x, true);
    }

  private:
    bool appendGlyphs(const std::string& character, double& x, bool acceptsMissing) const {
        cairo_glyph_t* glyphs = nullptr;
        int count = 0;
        cairo_scaled_font_t* font = cairo_get_scaled_font(get());
        if (cairo_scaled_font_text_to_glyphs(font, x, 0, character.data(), static_cast<int>(character.size()),
                                             &glyphs, &count, nullptr, nullptr,
                                             nullptr) != CAIRO_STATUS_SUCCESS)
            return false;
        const std::unique_ptr<cairo_glyph_t, decltype(&cairo_glyph_free)> owner(glyphs, cairo_glyph_free);
        for (int i = 0; i < count; ++i)
            if (glyphs[i].index == 0 && !acceptsMissing) return false;
        cairo_text_extents_t extents{};
        cairo_scaled_font_glyph_extents(font, glyphs, count, &extents);
        cairo_glyph_path(get(), glyphs, count);
        x += extents.x_advance;
        return true;
    }

    std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface_;
    std::unique_ptr<cairo_t, decltype(&cairo_destroy)> context_;
};

class OutlineFace final : public TextFace {
  public:
    double width(const std::string& text) const override {
        const OutlineContext context;
        return trace(context, text);
    }

    void show(ContentStream& content, const std::string& line, double x, double y,
              double fontSize) const override {
        const OutlineContext context;
        trace(context, line);
        const std::unique_ptr<cairo_path_t, decltype(&cairo_path_destroy)> path(
            cairo_copy_path(context.get()), cairo_path_destroy);
        const double factor = fontSize / kUnits;
        const auto point = [&](const cairo_path_data_t& data) {
            content.number(x + data.point.x * factor).number(y - data.point.y * factor);
        };
        for (int i = 0; i < path->num_data; i += path->data[i].header.length) {
            const cairo_path_data_t* data = &path->data[i];
            switch (data->header.type) {
            case CAIRO_PATH_MOVE_TO:
                point(data[1]);
                content.op("m");
                break;
            case CAIRO_PATH_LINE_TO:
                point(data[1]);
                content.op("l");
                break;
            case CAIRO_PATH_CURVE_TO:
                for (int n = 1; n <= 3; ++n)
                    point(data[n]);
                content.op("c");
                break;
            case CAIRO_PATH_CLOSE_PATH:
                content.op("h");
                break;
            }
        }
        content.op(path->num_data > 0 ? "f" : "");
    }

    bool usesHelvetica() const override { return false; }

  private:
    /// Puts the outlines of the text on the context's path and returns its width.
    static double trace(const OutlineContext& context, const std::string& text) {
        const icu::UnicodeString visual = inVisualOrder(text);
        double x = 0;
        for (int32_t i = 0; i < visual.length(); i = visual.moveIndex32(i, 1)) {
            std::string character;
            icu::UnicodeString(visual.char32At(i)).toUTF8String(character);
            context.append(character, x);
        }
        return x;
    }
};

} // namespace

std::unique_ptr<TextFace> makeOutlineFace() { return std::make_unique<OutlineFace>(); }

} // namespace norvane
