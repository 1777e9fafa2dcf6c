#include "VantroqueCLI/TerminalProgress.h"

#include "Base/Numbers.h"
#include "Base/Text.h"

#include <sys/ioctl.h>
#include <unistd.h>

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

QString timeLeft(std::size_t done, std::size_t count, double elapsedSeconds)
{
    if (done == 0)
        return {};
    const double each = elapsedSeconds / static_cast<double>(done);
    const auto left = Numbers::roundedToInt(each * static_cast<double>(count - done));
    return u", %1:%2 left"_s.arg(QString::number(left / 60), Numbers::zeroPadded(left % 60, 2));
}

} // namespace

TerminalProgress::TerminalProgress(std::size_t fileCount)
    : m_fileCount(fileCount), m_isTerminal(::isatty(STDERR_FILENO) == 1)
{
}

TerminalProgress::~TerminalProgress()
{
    if (m_isTerminal)
        print(clearLine);
}

void TerminalProgress::entered(std::size_t file, const QString& name, AnalysisProgress::Stage stage)
{
    const std::scoped_lock lock(m_mutex);
    m_running[file] = {name, stage};
    draw(name, stage);
}

void TerminalProgress::finished(std::size_t file)
{
    const std::scoped_lock lock(m_mutex);
    ++m_done;
    m_running.erase(file);
    if (!m_running.empty())
        draw(m_running.begin()->second.first, m_running.begin()->second.second);
}

QString TerminalProgress::line(std::size_t done, std::size_t count, const QString& name,
                               AnalysisProgress::Stage stage, double elapsedSeconds, int columns)
{
    const auto filled = static_cast<qsizetype>(barWidth * done / std::max<std::size_t>(count, 1));
    const QString whole = u"[%1%2] %3/%4%5  %6  %7"_s.arg(
        QString(filled, u'#'), QString(barWidth - filled, u'.'), QString::number(done),
        QString::number(count), timeLeft(done, count, elapsedSeconds),
        AnalysisProgress::label(stage), Text::printable(name));
    return Text::firstCharacters(whole, columns - 1);
}

void TerminalProgress::draw(const QString& name, AnalysisProgress::Stage stage)
{
    if (!m_isTerminal)
        return;
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - m_started;
    print(clearLine
          + line(m_done, m_fileCount, name, stage, elapsed.count(), terminalColumns()).toUtf8());
}

} // namespace vantroque
