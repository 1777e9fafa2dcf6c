#include "VantroquePlatform/Spelling/WordSplitter.h"

#include "Captions/CaptionWords.h"

#include <QStringList>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace vantroque::WordSplitter {

using namespace Qt::StringLiterals;
using Range = SpellChecker::Range;

namespace {

/// What a word may hold after its first letter.
bool isWithinWord(QChar c)
{
    constexpr QChar catalanDot(u'\u00B7'); // in "col·lecció"
    return c.isLetter() || c.isMark() || c.category() == QChar::Other_Format || isApostrophe(c)
           || c == catalanDot;
}

/// What addresses end in. Countries such as "in" and "so" are left out: these words begin
/// sentences, before which a blank may be missing.
bool isTopLevelDomain(const QString& label)
{
    static const QStringList domains =
        u"com net org info biz edu gov app shop online tv io co ai eu "
        "uk ie us ca au nz de at ch fr be nl lu es pt it mx ar br dk se no fi pl cz"_s.split(u' ');
    // Nobody writes "acme.It"; that is a sentence.
    return domains.contains(label) || (label.isUpper() && domains.contains(label.toLower()));
}

/// Ends in a domain, as "acme.com/sale" does, and "acme.com's".
bool hasDomain(QStringView stretch)
{
    const auto isLetter = [](QChar c) { return c.isLetter(); };
    QStringView host = stretch.first(std::ranges::find(stretch, u'/') - stretch.begin());
    while (!host.isEmpty() && !host.back().isLetter())
        host.chop(1);
    const qsizetype dot = host.lastIndexOf(u'.');
    if (dot < 1 || !host[dot - 1].isLetterOrNumber())
        return false;
    const QStringView lastLabel = host.sliced(dot + 1);
    const auto end = std::ranges::find_if_not(lastLabel, isLetter);
    return isTopLevelDomain(lastLabel.first(end - lastLabel.begin()).toString());
}

/// The same after a quotation mark or bracket.
QStringView withoutOpening(QStringView stretch)
{
    while (!stretch.isEmpty() && stretch.front().isPunct())
        stretch = stretch.sliced(1);
    return stretch;
}

/// An address, a handle or a hash tag.
bool isAddress(QStringView stretch)
{
    return stretch.startsWith(u'#') || stretch.contains(u'@') || stretch.contains(u"://")
           || withoutOpening(stretch).startsWith(u"www.", Qt::CaseInsensitive)
           || hasDomain(stretch);
}

/// The words in a token, which by Unicode's rules may hold digits, dots and underlines.
void addWords(QStringView token, qsizetype offset, std::vector<Range>& words)
{
    if (std::ranges::any_of(token, [](QChar c) { return c.isNumber(); }))
        return;
    for (qsizetype i = 0; i < token.size(); ++i) {
        if (!token[i].isLetter())
            continue;
        const qsizetype start = i;
        while (i < token.size() && isWithinWord(token[i]))
            ++i;
        qsizetype end = i;
        while (!token[end - 1].isLetter() && !token[end - 1].isMark())
            --end;
        words.push_back({offset + start, end - start});
    }
}

/// The words in a stretch without white space.
void addStretch(QStringView stretch, qsizetype offset, std::vector<Range>& words)
{
    if (isAddress(stretch))
        return;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, stretch, nullptr, 0);
    qsizetype start = 0;
    for (qsizetype end = 0; (end = finder.toNextBoundary()) >= 0; start = end)
        addWords(stretch.sliced(start, end - start), offset + start, words);
}

/// Makes one word of two with a single hyphen between them.
std::vector<Range> withHyphens(const std::vector<Range>& words, const QString& text)
{
    std::vector<Range> joined;
    for (const Range& word : words) {
        const qsizetype end = joined.empty() ? -1 : joined.back().start + joined.back().length;
        if (end >= 0 && end + 1 == word.start && isHyphen(text[end]))
            joined.back().length += 1 + word.length;
        else
            joined.push_back(word);
    }
    return joined;
}

} // namespace

std::vector<Range> words(const QString& text)
{
    const QStringView view = text;
    std::vector<Range> found;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const qsizetype start = i;
        while (i < text.size() && !text[i].isSpace())
            ++i;
        addStretch(view.sliced(start, i - start), start, found);
    }
    return withHyphens(found, text);
}

bool isApostrophe(QChar c)
{
    return CaptionWords::isApostrophe(c.unicode());
}

bool isHyphen(QChar c)
{
    return c == u'-' || c == u'\u2010' || c == u'\u2011';
}

} // namespace vantroque::WordSplitter
