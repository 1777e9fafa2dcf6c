#include "VantroqueApp/Views/Style/Theme.h"

namespace vantroque {

namespace {

const Theme* used = &Theme::dark();

} // namespace

QColor Theme::of(Verdict verdict) const
{
    switch (verdict) {
    case Verdict::pass: return pass;
    case Verdict::warn: return warn;
    case Verdict::fail: return fail;
    case Verdict::info: break;
    }
    return text2;
}

const Theme& Theme::dark()
{
    static const Theme theme{.isDark = true,
                             .window = {0x17, 0x18, 0x1C},
                             .sidebar = {0x1A, 0x1B, 0x20},
                             .card = {0x26, 0x28, 0x2E},
                             .hairline = {0x33, 0x36, 0x3D},
                             .controlEdge = {0x3C, 0x40, 0x49},
                             .dashes = {0x6B, 0x71, 0x80},
                             .text1 = {0xEC, 0xEE, 0xF1},
                             .text2 = {0xA6, 0xAB, 0xB6},
                             .text3 = {0x8E, 0x94, 0xA0},
                             .accent = {0x7F, 0xB0, 0xFF},
                             .onAccent = {0x0F, 0x15, 0x20},
                             .selected = {0x2A, 0x34, 0x46},
                             .hover = {0x21, 0x23, 0x29},
                             .pressed = {0x2F, 0x32, 0x3A},
                             .badge = {0x33, 0x36, 0x3D},
                             .chip = {0x26, 0x28, 0x2E},
                             .glyphOutline = Qt::transparent};
    return theme;
}

const Theme& Theme::light()
{
    static const Theme theme{.isDark = false,
                             .window = {0xF4, 0xF5, 0xF7},
                             .sidebar = {0xEB, 0xEC, 0xF0},
                             .card = {0xFF, 0xFF, 0xFF},
                             .hairline = {0xD6, 0xD9, 0xDF},
                             .controlEdge = {0xC4, 0xC8, 0xD0},
                             .dashes = {0x6B, 0x71, 0x80},
                             .text1 = {0x17, 0x18, 0x1C},
                             .text2 = {0x4F, 0x54, 0x5F},
                             .text3 = {0x64, 0x6A, 0x76},
                             .accent = {0x1F, 0x5F, 0xD0},
                             .onAccent = {0xFF, 0xFF, 0xFF},
                             .selected = {0xD5, 0xE3, 0xFB},
                             .hover = {0xE3, 0xE5, 0xEA},
                             .pressed = {0xD6, 0xD9, 0xDF},
                             .badge = {0xD3, 0xD7, 0xDE},
                             .chip = {0x17, 0x18, 0x1C},
                             .glyphOutline = {23, 24, 28, 140}};
    return theme;
}

const Theme& Theme::current()
{
    return *used;
}

void Theme::use(const Theme& theme)
{
    used = &theme;
}

} // namespace vantroque
