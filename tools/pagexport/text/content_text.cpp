#include "tools/pagexport/text/content_text.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <vector>

namespace tools {

namespace {

constexpr std::size_t deepestDrawnForms = 40;
constexpr std::size_t deepestStates = 100000; // unbalanced saves of a hostile page

/// A matrix in double precision: long strings add up thousands of advances.
struct Matrix
{
    double a = 1;
    double b = 0;
    double c = 0;
    double d = 1;
    double e = 0;
    double f = 0;

    void translate(double x, double y) noexcept
    {
        e += x * a + y * c;
        f += x * b + y * d;
    }
};

Matrix product(const Matrix &first, const Matrix &second) noexcept
{
    return {first.a * second.a + first.b * second.c,
            first.a * second.b + first.b * second.d,
            first.c * second.a + first.d * second.c,
            first.c * second.b + first.d * second.d,
            first.e * second.a + first.f * second.c + second.e,
            first.e * second.b + first.f * second.d + second.f};
}

Matrix fromLibrary(fz_matrix matrix) noexcept
{
    return {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f};
}

/// What "q" saves and "Q" restores, as far as text depends on it.
struct TextState
{
    Matrix toPage;
    CachedFont *font = nullptr;
    double size = 0;
    double characterSpace = 0;
    double wordSpace = 0;
    double scale = 1;
    double leading = 0;
    double rise = 0;
};

struct TextWalk
{
    FontCache &fonts;
    ItemBuilder &builder;
    pdf_document *document;
    fz_cookie *cookie;
    TextState state;
    std::vector<TextState> saved;
    std::vector<int> forms; ///< object numbers of the forms being run
    Matrix line;            ///< where the text line starts
    Matrix text;            ///< where the pen is
    double spacing = 0;     ///< character spacing behind the glyph shown last, in points
};

/// The library's processor with our state behind it. Its memory belongs to the library.
struct TextProcessor
{
    pdf_processor base;
    TextWalk *walk;
};

TextWalk &walkOf(pdf_processor *processor)
{
    return *reinterpret_cast<TextProcessor *>(processor)->walk;
}

// The library unwinds by longjmp and is no C++: nothing may be thrown through it. @p work must hold
// no object with a destructor when it calls the library.
template <typename Work> void guarded(fz_context *context, Work work)
{
    bool failed = false;
    try {
        work();
    } catch (const std::bad_alloc &) {
        failed = true;
    }
    if (failed) {
        fz_throw(context, FZ_ERROR_MEMORY, "out of memory while reading text");
    }
}

void showText(TextWalk &walk, unsigned char *bytes, std::size_t length, bool hidden)
{
    TextState &state = walk.state;
    if (state.font == nullptr) {
        return;
    }
    const bool vertical = state.font->isVertical();
    const Matrix pen = product(walk.text, state.toPage);
    const double across = state.size * state.scale;
    TextStyle style = TextStyle::fromMatrix(across * pen.a, across * pen.b, state.size * pen.c,
                                            state.size * pen.d, vertical);
    style.blank = state.font->blank();
    walk.builder.setStyle(style);
    const double stretch =
        state.size == 0 ? 0 : style.em / std::abs(vertical ? state.size : across);
    // Along the string, in units of the text before the pen's matrix.
    const double stepX = vertical ? pen.c : pen.a;
    const double stepY = vertical ? pen.d : pen.b;
    const double scale = vertical ? 1 : state.scale;
    const double unit = state.size * scale;
    const double spacing = state.characterSpace * scale;
    const double shownSpacing = (vertical ? -spacing : spacing) * stretch;
    Glyph glyph;
    glyph.x = pen.e + (vertical ? 0 : state.rise * pen.c);
    glyph.y = pen.f + (vertical ? 0 : state.rise * pen.d);
    double moved = 0;
    for (unsigned char *end = bytes + length; bytes < end;) {
        const FontCode &code = state.font->next(bytes, end);
        bytes += code.bytes;
        double step = 0;
        if (code.cid >= 0) {
            const double width = vertical ? code.verticalWidth : code.width;
            step = width * unit + spacing;
            if (!hidden) {
                glyph.advance = (vertical ? -width : width) * style.em;
                glyph.spacing = walk.spacing;
                glyph.letters = &code.letters;
                walk.builder.add(glyph);
                walk.spacing = shownSpacing;
            }
        }
        if (code.code == ' ' && code.bytes == 1) {
            step += state.wordSpace * scale;
        }
        glyph.x += step * stepX;
        glyph.y += step * stepY;
        moved += step;
    }
    vertical ? walk.text.translate(0, moved) : walk.text.translate(moved, 0);
}

void movePen(TextWalk &walk, double perMille)
{
    const TextState &state = walk.state;
    const double step = -perMille * state.size * 0.001;
    if (state.font != nullptr && state.font->isVertical()) {
        walk.text.translate(0, step);
    } else {
        walk.text.translate(step * state.scale, 0);
    }
}

void startLine(TextWalk &walk, double x, double y)
{
    walk.line.translate(x, y);
    walk.text = walk.line;
    walk.spacing = 0;
}

void opSave(fz_context *context, pdf_processor *processor)
{
    TextWalk &walk = walkOf(processor);
    if (walk.saved.size() >= deepestStates) {
        fz_throw(context, FZ_ERROR_GENERIC, "graphics states are nested too deeply");
    }
    guarded(context, [&walk] { walk.saved.push_back(walk.state); });
}

void opRestore(fz_context * /*context*/, pdf_processor *processor)
{
    TextWalk &walk = walkOf(processor);
    if (!walk.saved.empty()) {
        walk.state = walk.saved.back();
        walk.saved.pop_back();
    }
}

void opTransform(fz_context * /*context*/, pdf_processor *processor, float a, float b, float c,
                 float d, float e, float f)
{
    TextWalk &walk = walkOf(processor);
    walk.state.toPage = product({a, b, c, d, e, f}, walk.state.toPage);
}

void opBeginText(fz_context * /*context*/, pdf_processor *processor)
{
    TextWalk &walk = walkOf(processor);
    walk.line = Matrix();
    startLine(walk, 0, 0);
}

void opCharacterSpace(fz_context * /*context*/, pdf_processor *processor, float space)
{
    walkOf(processor).state.characterSpace = space;
}

void opWordSpace(fz_context * /*context*/, pdf_processor *processor, float space)
{
    walkOf(processor).state.wordSpace = space;
}

void opScale(fz_context * /*context*/, pdf_processor *processor, float percent)
{
    walkOf(processor).state.scale = static_cast<double>(percent) / 100;
}

void opLeading(fz_context * /*context*/, pdf_processor *processor, float leading)
{
    walkOf(processor).state.leading = leading;
}

void opRise(fz_context * /*context*/, pdf_processor *processor, float rise)
{
    walkOf(processor).state.rise = rise;
}

void opFont(fz_context *context, pdf_processor *processor, const char * /*name*/,
            pdf_font_desc *font, float size)
{
    TextWalk &walk = walkOf(processor);
    walk.state.size = size;
    walk.state.font = font == nullptr ? nullptr : walk.fonts.find(font);
    if (font != nullptr && walk.state.font == nullptr) {
        fz_throw(context, FZ_ERROR_MEMORY, "out of memory while reading a font");
    }
}

void opMoveLine(fz_context * /*context*/, pdf_processor *processor, float x, float y)
{
    startLine(walkOf(processor), x, y);
}

void opMoveLineSetLeading(fz_context * /*context*/, pdf_processor *processor, float x, float y)
{
    TextWalk &walk = walkOf(processor);
    walk.state.leading = -static_cast<double>(y);
    startLine(walk, x, y);
}

void opTextMatrix(fz_context * /*context*/, pdf_processor *processor, float a, float b, float c,
                  float d, float e, float f)
{
    TextWalk &walk = walkOf(processor);
    walk.line = {a, b, c, d, e, f};
    startLine(walk, 0, 0);
}

void opNextLine(fz_context * /*context*/, pdf_processor *processor)
{
    TextWalk &walk = walkOf(processor);
    startLine(walk, 0, -walk.state.leading);
}

void opShow(fz_context *context, pdf_processor *processor, char *bytes, std::size_t length)
{
    TextWalk &walk = walkOf(processor);
    const bool hidden = processor->hidden > 0;
    guarded(context, [&walk, bytes, length, hidden] {
        showText(walk, reinterpret_cast<unsigned char *>(bytes), length, hidden);
    });
}

void opShowArray(fz_context *context, pdf_processor *processor, pdf_obj *array)
{
    TextWalk &walk = walkOf(processor);
    const int count = pdf_array_len(context, array);
    for (int i = 0; i < count; ++i) {
        pdf_obj *piece = pdf_array_get(context, array, i);
        if (pdf_is_string(context, piece)) {
            std::size_t length = 0;
            const char *bytes = pdf_to_string(context, piece, &length);
            opShow(context, processor, const_cast<char *>(bytes), length);
        } else {
            movePen(walk, pdf_to_real(context, piece));
        }
    }
}

void opNextLineShow(fz_context *context, pdf_processor *processor, char *bytes, std::size_t length)
{
    opNextLine(context, processor);
    opShow(context, processor, bytes, length);
}

void opSpacedNextLineShow(fz_context *context, pdf_processor *processor, float wordSpace,
                          float characterSpace, char *bytes, std::size_t length)
{
    opWordSpace(context, processor, wordSpace);
    opCharacterSpace(context, processor, characterSpace);
    opNextLineShow(context, processor, bytes, length);
}

bool entersForm(fz_context *context, TextWalk &walk, pdf_obj *form)
{
    const int number = pdf_to_num(context, form);
    if (walk.forms.size() >= deepestDrawnForms) {
        return false;
    }
    for (const int open : walk.forms) {
        if (open == number && number != 0) {
            return false;
        }
    }
    guarded(context, [&walk, number] { walk.forms.push_back(number); });
    return true;
}

void opForm(fz_context *context, pdf_processor *processor, const char * /*name*/, pdf_obj *form,
            pdf_obj *pageResources)
{
    TextWalk &walk = walkOf(processor);
    if (form == nullptr || !entersForm(context, walk, form)) {
        return;
    }
    const TextState state = walk.state;
    const Matrix line = walk.line;
    const Matrix text = walk.text;
    const std::size_t depth = walk.saved.size();
    fz_try(context)
    {
        walk.state.toPage =
            product(fromLibrary(pdf_xobject_matrix(context, form)), walk.state.toPage);
        pdf_obj *resources = pdf_xobject_resources(context, form);
        pdf_process_contents(context, processor, walk.document,
                             resources != nullptr ? resources : pageResources, form, walk.cookie);
    }
    fz_always(context)
    {
        walk.saved.resize(std::min(depth, walk.saved.size()));
        walk.state = state;
        walk.line = line;
        walk.text = text;
        walk.spacing = 0;
        walk.forms.pop_back();
    }
    fz_catch(context)
    {
        fz_rethrow(context);
    }
}

void setOperators(pdf_processor &processor)
{
    processor.usage = "View";
    processor.op_q = opSave;
    processor.op_Q = opRestore;
    processor.op_cm = opTransform;
    processor.op_BT = opBeginText;
    processor.op_Tc = opCharacterSpace;
    processor.op_Tw = opWordSpace;
    processor.op_Tz = opScale;
    processor.op_TL = opLeading;
    processor.op_Tf = opFont;
    processor.op_Ts = opRise;
    processor.op_Td = opMoveLine;
    processor.op_TD = opMoveLineSetLeading;
    processor.op_Tm = opTextMatrix;
    processor.op_Tstar = opNextLine;
    processor.op_TJ = opShowArray;
    processor.op_Tj = opShow;
    processor.op_squote = opNextLineShow;
    processor.op_dquote = opSpacedNextLineShow;
    processor.op_Do_form = opForm;
}

} // namespace

std::string readContentText(fz_context *context, pdf_page *page, fz_matrix toPage, FontCache &fonts,
                            ItemBuilder &builder, fz_cookie *cookie)
{
    TextWalk walk{fonts, builder, page->doc, cookie, {}, {}, {}, {}, {}, 0};
    walk.state.toPage = fromLibrary(toPage);
    TextProcessor *processor = nullptr;
    fz_var(processor);
    fz_try(context)
    {
        processor = static_cast<TextProcessor *>(pdf_new_processor(context, sizeof(TextProcessor)));
        processor->walk = &walk;
        setOperators(processor->base);
        pdf_process_contents(context, &processor->base, page->doc,
                             pdf_page_resources(context, page), pdf_page_contents(context, page),
                             cookie);
        pdf_close_processor(context, &processor->base);
    }
    fz_always(context)
    {
        pdf_drop_processor(context, processor == nullptr ? nullptr : &processor->base);
    }
    fz_catch(context)
    {
        return fz_caught_message(context);
    }
    return {};
}

} // namespace tools
