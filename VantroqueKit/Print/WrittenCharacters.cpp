#include "Print/WrittenCharacters.h"

#include <QByteArrayList>
#include <QString>

namespace vantroque::WrittenCharacters {

namespace {

/// The character that people write with this one's glyph.
char16_t usual(char16_t c)
{
    constexpr char16_t latinIota = 0x0269;
    constexpr char16_t greekIota = 0x03B9;
    if (c == latinIota)
        return greekIota;
    if (c < 0x2E80 || c > 0x2FDF) // radicals of Chinese characters
        return c;
    const QString unified = QString(QChar(c)).normalized(QString::NormalizationForm_KC);
    return unified.size() == 1 ? unified[0].unicode() : c;
}

/// "<2F47>" and the like, from `from` on, with the usual characters.
QByteArray withUsual(QByteArray line, qsizetype from)
{
    constexpr qsizetype length = 6;
    for (qsizetype at = line.indexOf('<', from); at >= 0; at = line.indexOf('<', at + 1)) {
        bool isHex = false;
        const uint code = line.mid(at + 1, length - 2).toUInt(&isHex, 16);
        if (!isHex || at + length > line.size() || line[at + length - 1] != '>')
            continue;
        const auto other = usual(static_cast<char16_t>(code));
        line.replace(at + 1, length - 2,
                     QByteArray::number(uint{other}, 16).toUpper().rightJustified(4, '0'));
    }
    return line;
}

} // namespace

QByteArray corrected(const QByteArray& table)
{
    QByteArrayList lines = table.split('\n');
    for (QByteArray& line : lines) {
        // "<first> <last> [<character> ...]", or "<first> <last> <character>" of consecutive ones.
        constexpr qsizetype secondCode = 7;
        constexpr qsizetype characters = 14;
        if (!line.startsWith('<') || line.size() <= characters)
            continue;
        const bool isSingle = line.left(secondCode - 1) == line.mid(secondCode, secondCode - 1);
        if (isSingle || line[characters] == '[')
            line = withUsual(line, characters);
    }
    return lines.join('\n');
}

} // namespace vantroque::WrittenCharacters
