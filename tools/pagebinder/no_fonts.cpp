// The library's built-in fonts are 44 MB, and nothing here ever draws a character. These functions
// take the place of those that hand the fonts out, so that a static program goes without them.

#include <mupdf/fitz.h>

extern "C" {

const unsigned char *fz_lookup_base14_font(fz_context *, const char *, int *length)
{
    *length = 0;
    return nullptr;
}

const unsigned char *fz_lookup_builtin_font(fz_context *, const char *, int, int, int *length)
{
    *length = 0;
    return nullptr;
}

const unsigned char *fz_lookup_cjk_font(fz_context *, int, int *length, int *)
{
    *length = 0;
    return nullptr;
}

const unsigned char *fz_lookup_cjk_font_by_language(fz_context *, const char *, int *length, int *)
{
    *length = 0;
    return nullptr;
}

const unsigned char *fz_lookup_noto_font(fz_context *, int, int, int *length, int *)
{
    *length = 0;
    return nullptr;
}

const unsigned char *fz_lookup_noto_math_font(fz_context *, int *length)
{
    *length = 0;
    return nullptr;
}

const unsigned char *fz_lookup_noto_music_font(fz_context *, int *length)
{
    *length = 0;
    return nullptr;
}

const unsigned char *fz_lookup_noto_symbol1_font(fz_context *, int *length)
{
    *length = 0;
    return nullptr;
}

const unsigned char *fz_lookup_noto_symbol2_font(fz_context *, int *length)
{
    *length = 0;
    return nullptr;
}

const unsigned char *fz_lookup_noto_emoji_font(fz_context *, int *length)
{
    *length = 0;
    return nullptr;
}

} // extern "C"
