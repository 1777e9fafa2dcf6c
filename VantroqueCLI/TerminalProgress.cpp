#include "VantroqueCLI/TerminalProgress.h"

#include "Base/Numbers.h"
#include "Base/Text.h"

#include <array>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int barWidth = 20;

/// Back to the start of the line, and clear it.
const QByteArray clearLine = "\r\x1b[K";

void print(const QByteArray& bytes)
{
    // A terminal that is gone is no reason to stop.
    [[maybe_unused]] const auto written =
        ::write(STDERR_FILENO, bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

int terminalColumns()
{
    constexpr int usual = 80;
    winsize size{};
    return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : usual;
}

QString timeLeft(double done, std::size_t count, double elapsedSeconds)
{
    constexpr double tooEarly = 0.02;
    if (done < tooEarly)
        return {};
    const auto left =
        Numbers::roundedToInt(elapsedSeconds / done * (static_cast<double>(count) - done));
    return u", %1:%2 left"_s.arg(QString::number(left / 60), Numbers::zeroPadded(left % 60, 2));
}

QString eventText(const AnalysisProgress::LiveEvent& event)
{
    static const std::array words{u"black from"_s, u"black to"_s,   u"silent from"_s,
                                  u"silent to"_s,  u"still from"_s, u"still to"_s};
    return u"%1 %2 s"_s.arg(words.at(static_cast<std::size_t>(event.kind)),
                            Numbers::fixed(event.time, 2));
}

} // namespace

TerminalProgress::TerminalProgress(std::size_t fileCount, bool verbose)
    : m_fileCount(fileCount), m_verbose(verbose), m_isTerminal(::isatty(STDERR_FILENO) == 1)
{
}

TerminalProgress::~TerminalProgress()
{
    clear();
}

void TerminalProgress::update(std::size_t file, const QString& name,
                              const AnalysisProgress::Snapshot& snapshot)
{
    const std::scoped_lock lock(m_mutex);
    Running& running = m_running[file];
    running.name = name;
    running.stage = snapshot.stage;
    running.fraction = snapshot.fraction;
    if (m_verbose)
        tellEvents(running, snapshot);
    draw(running);
}

void TerminalProgress::finished(std::size_t file, const QString& verdict)
{
    const std::scoped_lock lock(m_mutex);
    ++m_done;
    m_running.erase(file);
    clear();
    if (m_fileCount > 1) {
        const QString left =
            m_done < m_fileCount ? timeLeft(share(), m_fileCount, elapsedSeconds()) : QString();
        print(
            (u"%1 of %2  "_s.arg(m_done).arg(m_fileCount) + Text::printable(verdict) + left + u'\n')
                .toUtf8());
    }
    if (!m_running.empty())
        draw(m_running.begin()->second);
}

Result<void> TerminalProgress::aside(const std::function<Result<void>()>& print)
{
    const std::scoped_lock lock(m_mutex);
    clear();
    return print();
}

void TerminalProgress::tellEvents(Running& running, const AnalysisProgress::Snapshot& snapshot)
{
    for (; running.eventsTold < snapshot.events.size(); ++running.eventsTold) {
        clear();
        print(
            u"%1: %2\n"_s
                .arg(Text::printable(running.name), eventText(snapshot.events[running.eventsTold]))
                .toUtf8());
    }
}

QString TerminalProgress::line(double done, std::size_t count, const Running& running,
                               double elapsedSeconds, int columns)
{
    const double share = count > 0 ? done / static_cast<double>(count) : 0;
    const auto filled = static_cast<qsizetype>(Numbers::truncatedToInt(barWidth * share));
    const QString files =
        count > 1 ? u", %1 of %2 files"_s.arg(Numbers::truncatedToInt(done)).arg(count) : QString();
    const QString whole = u"[%1%2] %3%%4%5  %6  %7"_s.arg(
        QString(filled, u'#'), QString(barWidth - filled, u'.'),
        QString::number(Numbers::truncatedToInt(100 * share)), files,
        timeLeft(done, count, elapsedSeconds), AnalysisProgress::label(running.stage),
        Text::printable(running.name));
    return Text::firstColumns(whole, columns - 1);
}

void TerminalProgress::draw(const Running& running)
{
    if (!m_isTerminal)
        return;
    print(clearLine
          + line(share(), m_fileCount, running, elapsedSeconds(), terminalColumns()).toUtf8());
    m_isDrawn = true;
}

void TerminalProgress::clear()
{
    if (std::exchange(m_isDrawn, false))
        print(clearLine);
}

/// Whole files and shares of those under way.
double TerminalProgress::share() const
{
    double done = static_cast<double>(m_done);
    for (const auto& [file, each] : m_running)
        done += each.fraction;
    return done;
}

double TerminalProgress::elapsedSeconds() const
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_started).count();
}

} // namespace vantroque
