#include "Captions/CaptionParser.h"
#include "Captions/CaptionWords.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace vantroque::CaptionParser {

namespace {

/// Finds single characters. A bracket that carries a combining mark is another character.
class CharacterFinder {
public:
    explicit CharacterFinder(QStringView text)
        : m_text(text), m_characters(QTextBoundaryFinder::Grapheme, text)
    {
    }

    bool isAt(qsizetype i, char16_t wanted)
    {
        return m_text[i] == wanted && isBoundary(i) && isBoundary(i + 1);
    }

    /// Where the first `wanted` stands from `from` on, or -1.
    qsizetype find(char16_t wanted, qsizetype from)
    {
        qsizetype found = m_text.indexOf(wanted, from);
        while (found >= 0 && !isAt(found, wanted))
            found = m_text.indexOf(wanted, found + 1);
        return found;
    }

private:
    bool isBoundary(qsizetype i)
    {
        m_characters.setPosition(i);
        return m_characters.isAtBoundary();
    }

    QStringView m_text;
    QTextBoundaryFinder m_characters;
};

/// What stands between an opening bracket and the next closing one. Remembers when none is left,
/// since a text of nothing but opening brackets would be searched to its end for each of them.
class Brackets {
public:
    Brackets(QStringView text, char16_t opening, char16_t closing)
        : m_text(text), m_opening(opening), m_closing(closing)
    {
    }

    /// What is inside the brackets that open at `i`, if they do.
    std::optional<QStringView> at(qsizetype i, CharacterFinder& finder)
    {
        if (!m_mayClose || !finder.isAt(i, m_opening))
            return std::nullopt;
        const qsizetype end = finder.find(m_closing, i + 1);
        m_mayClose = end >= 0;
        if (!m_mayClose)
            return std::nullopt;
        return m_text.sliced(i + 1, end - i - 1);
    }

private:
    QStringView m_text;
    char16_t m_opening;
    char16_t m_closing;
    bool m_mayClose = true;
};

/// "{\an7}" to "{\an9}" stand for the upper row of a number pad.
bool movesToTop(QStringView override)
{
    return override.startsWith(u"\\an7") || override.startsWith(u"\\an8")
           || override.startsWith(u"\\an9");
}

class Styler {
public:
    explicit Styler(QStringView text)
        : m_text(text), m_finder(text), m_overrides(text, u'{', u'}'), m_tags(text, u'<', u'>')
    {
    }

    StyledText run()
    {
        constexpr qsizetype brackets = 2;
        for (qsizetype i = 0; i < m_text.size();) {
            if (const auto override = m_overrides.at(i, m_finder)) {
                if (movesToTop(*override))
                    m_result.placement = CaptionCue::Placement::top;
                i += override->size() + brackets;
            } else if (const auto tag = m_tags.at(i, m_finder)) {
                obey(CaptionWords::first(*tag).toString().toLower());
                i += tag->size() + brackets;
            } else {
                const qsizetype start = i++;
                while (i < m_text.size() && m_text[i] != u'{' && m_text[i] != u'<')
                    ++i;
                m_style.text += m_text.sliced(start, i - start);
            }
        }
        flush();
        dropBlankEnd();
        return std::move(m_result);
    }

private:
    void obey(const QString& tag)
    {
        if (tag == u"br" || tag == u"br/")
            m_style.text += u'\n';
        const bool closes = tag.startsWith(u'/');
        const auto name = QStringView(tag).sliced(closes ? 1 : 0);
        if (name == u"i")
            change(m_style.italic, !closes);
        else if (name == u"b")
            change(m_style.bold, !closes);
        else if (name == u"u")
            change(m_style.underline, !closes);
    }

    void change(bool& flag, bool value)
    {
        flush();
        flag = value;
    }

    void flush()
    {
        if (m_style.text.isEmpty())
            return;
        CaptionCue::Run finished = m_style;
        finished.text = decodeEntities(m_style.text);
        m_result.runs.push_back(std::move(finished));
        m_style.text.clear();
    }

    void dropBlankEnd()
    {
        auto& runs = m_result.runs;
        while (!runs.empty()
               && std::ranges::all_of(runs.back().text, [](QChar c) { return c.isSpace(); }))
            runs.pop_back();
    }

    QStringView m_text;
    CharacterFinder m_finder;
    Brackets m_overrides;
    Brackets m_tags;
    CaptionCue::Run m_style; ///< The style of what comes, and the text read in it.
    StyledText m_result;
};

} // namespace

StyledText styledRuns(QStringView text)
{
    return Styler(text).run();
}

QString decodeEntities(QStringView text)
{
    static constexpr std::array<std::pair<QStringView, QChar>, 6> entities{{
        {u"&nbsp;", QChar(QChar::Nbsp)},
        {u"&lt;", u'<'},
        {u"&gt;", u'>'},
        {u"&quot;", u'"'},
        {u"&#39;", u'\''},
        {u"&amp;", u'&'},
    }};
    QString decoded;
    for (qsizetype at = 0; (at = text.indexOf(u'&')) >= 0;) {
        decoded += text.first(at);
        text = text.sliced(at);
        const auto entity = std::ranges::find_if(
            entities, [&](const auto& one) { return text.startsWith(one.first); });
        decoded += entity == entities.end() ? text.front() : entity->second;
        text = text.sliced(entity == entities.end() ? 1 : entity->first.size());
    }
    decoded += text;
    return decoded;
}

} // namespace vantroque::CaptionParser
