#include "Tools/ToolWords.h"

#include "Base/Text.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace vantroque::ToolWords {

using namespace Qt::StringLiterals;

namespace {

/// Longer lines are no complaints, and no tool may fill the memory with one.
constexpr std::size_t longestLine = 4096;

/// Holds what a tool says as it crashes.
constexpr std::size_t tailLength = 2048;

/// The tags of a file stand indented in a log. They could say anything.
bool isIndented(std::string_view line)
{
    return line.starts_with(' ') || line.starts_with('\t');
}

/// The system's words for an error number stand at the end of a line. Elsewhere they may be part of
/// a file's name.
bool saysSystem(std::string_view line, std::string_view words)
{
    return line.ends_with(words);
}

bool lacksMemory(std::string_view line)
{
    const auto holds = [&](std::string_view words) { return line.find(words) != line.npos; };
    // The dynamic linker, before the tool itself runs.
    if (holds("error while loading shared libraries:"))
        return holds("failed to map segment") || holds("cannot map zero-fill pages")
               || saysSystem(line, "Cannot allocate memory");
    // Not only in the system's words: what failed for want of memory also fails without them.
    return saysSystem(line, "Cannot allocate memory")
           || saysSystem(line, "Could not allocate memory")
           || saysSystem(line, "Resource temporarily unavailable") // a thread
           || holds("pthread_create failed: ") || holds("Thread creation failed: ")
           || line.ends_with("_thread_init failed") || line.ends_with("_thread_encoder_init failed")
           || line.ends_with("std::bad_alloc'");
}

bool lacksDescriptors(std::string_view line)
{
    return saysSystem(line, "cannot open shared object file: Error 24") // EMFILE
           || saysSystem(line, "Too many open files")
           || saysSystem(line, "Too many open files in system");
}

bool lacksDisk(std::string_view line)
{
    return saysSystem(line, "No space left on device") || saysSystem(line, "Disk quota exceeded");
}

struct KnownWords {
    bool (*areIn)(std::string_view line);
    QString sentence;
};

/// The weightiest cause first: what follows from it stands in the same log.
const std::vector<KnownWords>& knownWords()
{
    static const std::vector<KnownWords> all{
        {lacksMemory, notEnoughMemory()},
        {lacksDescriptors, u"Too many files are open."_s},
        {lacksDisk, u"The disk is full."_s},
        {[](auto line) { return saysSystem(line, "File too large"); },
         u"A file would grow larger than is allowed here."_s},
        {[](auto line) { return saysSystem(line, "Permission denied"); },
         u"There is no permission to open it."_s},
        {[](auto line) {
             return saysSystem(line, "Input/output error") || saysSystem(line, "Stale file handle")
                    || saysSystem(line, "Transport endpoint is not connected")
                    || saysSystem(line, "Host is down");
         },
         u"It cannot be read from its disk or network share."_s},
        {[](auto line) { return line.ends_with("moov atom not found"); },
         u"The index is missing: the file was cut off, or is no media file."_s},
        {[](auto line) {
             return line.ends_with("error reading header metadata") // MXF
                    || line.ends_with("error reading header");      // MP4 and QuickTime
         },
         u"Its header or footer cannot be read: the file was cut off, or is damaged."_s},
        {[](auto line) {
             return saysSystem(line, "Invalid data found when processing input")
                    || line.starts_with("Cannot determine format of input stream ")
                    || line.starts_with("Decoder (codec none) not found for input stream ")
                    || line.starts_with("Output file is empty, nothing was encoded");
         },
         u"Nothing in it can be decoded."_s},
    };
    return all;
}

/// "[h264 @ 0x55d0c8]" before a line names a place in the tool's memory.
QString withoutAddresses(QString words)
{
    static const QRegularExpression address(uR"(\[[^\[\]\n]{1,80} @ 0x[0-9a-f]+\] ?)"_s);
    return words.remove(address);
}

bool matters(QStringView line)
{
    static const QRegularExpression complaint(
        u"error|invalid|fail|not found|no such|denied|cannot|could not|unable|corrupt|missing|"
        "unsupported|unknown|too (large|many)|no space"_s,
        QRegularExpression::CaseInsensitiveOption);
    return !line.isEmpty() && !line.front().isSpace()
           && complaint.match(line.toString()).hasMatch();
}

} // namespace

bool tellsOfShortage(std::string_view line)
{
    return !isIndented(line) && (lacksMemory(line) || lacksDescriptors(line) || lacksDisk(line));
}

QString notEnoughMemory()
{
    return u"There was not enough memory to decode this file."_s;
}

void ShortageWatch::feed(std::string_view bytes)
{
    m_tail.append(bytes.substr(bytes.size() - std::min(bytes.size(), tailLength)));
    m_tail.erase(0, m_tail.size() - std::min(m_tail.size(), tailLength));
    std::size_t start = 0;
    for (std::size_t end = 0; (end = bytes.find_first_of("\n\r", start)) != bytes.npos;
         start = end + 1) {
        const std::string_view rest = bytes.substr(start, end - start);
        read(m_line.empty() ? rest : m_line.append(rest));
        m_line.clear();
    }
    if (m_line.size() < longestLine)
        m_line += bytes.substr(start, longestLine);
}

void ShortageWatch::read(std::string_view line)
{
    if (m_complaint.empty() && tellsOfShortage(line))
        m_complaint = line;
}

std::string ShortageWatch::lastWordsOnMemory() const
{
    static const QRegularExpression words(
        u"bad_alloc|alloc.*fail|fail.*alloc|(cannot|can't|could not|unable to) .*alloc|"
        // A filter of ours that got no memory; its graph is right.
        "(out of|no|not enough|insufficient) memory|failed to configure output pad"_s,
        QRegularExpression::CaseInsensitiveOption);
    const auto lines = QByteArray::fromStdString(m_tail).split('\n');
    const auto last = std::ranges::find_if(lines.rbegin(), lines.rend(), [](const auto& line) {
        return !isIndented(Text::view(line)) && words.match(QString::fromUtf8(line)).hasMatch();
    });
    return last == lines.rend() ? std::string() : last->toStdString();
}

std::optional<QString> sentence(const QString& words)
{
    const auto lines = words.toUtf8().split('\n');
    for (const KnownWords& known : knownWords())
        if (std::ranges::any_of(lines, [&](const QByteArray& line) {
                const std::string_view text = Text::view(line);
                return !isIndented(text) && known.areIn(text);
            }))
            return known.sentence;
    return std::nullopt;
}

QString shown(const QString& words)
{
    constexpr qsizetype shownLength = 400;
    QString plain = withoutAddresses(words);
    if (Text::characterCount(plain) <= shownLength)
        return plain;
    const QString tail = Text::lastCharacters(plain, shownLength);
    const QString line = lineThatMatters(plain);
    return line.isEmpty() || line.size() > shownLength || tail.contains(line) ? tail
                                                                              : line + u'\n' + tail;
}

QString lineThatMatters(const QString& words)
{
    for (const QStringView line : QStringView(words).split(u'\n'))
        if (matters(line))
            return line.toString();
    return {};
}

} // namespace vantroque::ToolWords
