#include "VantroqueCLI/ReportWriter.h"

#include "Base/Files.h"
#include "VantroqueCLI/Output.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>

namespace vantroque {

namespace {

const QString scratchFile = QStringLiteral("scratch file of the report");

} // namespace

ReportWriter::ReportWriter(ReportForm form, OutputTarget target)
    : m_form(std::move(form)), m_target(std::move(target))
{
}

void ReportWriter::tellAtOnce(std::function<Result<void>(const QByteArray&)> print)
{
    m_print = std::move(print);
}

Result<void> ReportWriter::open()
{
    m_scratch.emplace(TRY(ScratchFolder::make()));
    const auto path = m_scratch->path() / "report";
    m_file = FileDescriptor(::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!m_file.isOpen())
        return failure(scratchFile + QStringLiteral(": ") + Files::systemMessage(errno));
    return {};
}

Result<void> ReportWriter::add(std::size_t index, const CheckedFile& file)
{
    return add(index, TRY(m_form.part(file)));
}

Result<void> ReportWriter::add(std::size_t index, QByteArray part)
{
    const std::scoped_lock lock(m_mutex);
    m_waiting.emplace(index, std::move(part));
    for (auto next = m_waiting.begin(); next != m_waiting.end() && next->first == m_next;
         next = m_waiting.erase(next), ++m_next)
        TRY(append((m_next == 0 ? m_form.head : m_form.between) + next->second));
    return {};
}

Result<void> ReportWriter::finish()
{
    const std::scoped_lock lock(m_mutex);
    TRY(append(m_form.tail));
    if (m_print)
        return {};
    QFile file;
    file.open(m_file.get(), QIODevice::ReadOnly);
    const qint64 size = file.size();
    const uchar* const bytes = file.map(0, size);
    if (bytes == nullptr)
        return failure(scratchFile + QStringLiteral(": ") + file.errorString());
    return m_target.write(QByteArray::fromRawData(reinterpret_cast<const char*>(bytes), size));
}

Result<void> ReportWriter::append(const QByteArray& bytes)
{
    if (m_print)
        return m_print(bytes);
    return Output::writeThrough(m_file.get(), bytes, scratchFile);
}

} // namespace vantroque
