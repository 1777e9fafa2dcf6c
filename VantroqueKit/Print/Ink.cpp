#include "Print/Ink.h"

#include "Draw/Colors.h"

namespace vantroque::Ink {

QColor of(Verdict verdict)
{
    switch (verdict) {
    case Verdict::pass: return painted(Palette::paperGreen);
    case Verdict::warn: return painted(Palette::paperAmber);
    case Verdict::fail: return painted(Palette::paperRed);
    case Verdict::info: break;
    }
    return quiet;
}

QString mark(Verdict verdict)
{
    switch (verdict) {
    case Verdict::pass: return QStringLiteral("✓");
    case Verdict::warn: return QStringLiteral("!");
    case Verdict::fail: return QStringLiteral("✕");
    case Verdict::info: break;
    }
    return QStringLiteral("–");
}

} // namespace vantroque::Ink
