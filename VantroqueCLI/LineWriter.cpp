#include "VantroqueCLI/LineWriter.h"

#include "Base/Files.h"
#include "VantroqueCLI/Output.h"
#include "VantroqueCLI/ResultLine.h"

#include <QFile>

#include <cerrno>
#include <sys/file.h>
#include <unistd.h>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

tl::unexpected<Error> systemFailure(const QString& name)
{
    return failure(name + u": "_s + Files::systemMessage(errno));
}

Result<void> lock(const FileDescriptor& file, const QString& name)
{
    if (::flock(file.get(), LOCK_EX | LOCK_NB) == 0)
        return {};
    if (errno == EWOULDBLOCK)
        return failure(
            u"%1: another vantroque-cli is writing it; wait for its end or name another file"_s.arg(
                name));
    return failure(u"%1: cannot be locked against a second run (%2); name a file elsewhere"_s.arg(
        name, Files::systemMessage(errno)));
}

} // namespace

Result<void> LineWriter::begin(bool overwrites)
{
    TRY(open());
    if (!m_target.isFile())
        return {};
    if (::lseek(m_file.get(), 0, SEEK_END) > 0 && !overwrites)
        return failure(
            u"%1 is there already; --resume goes on with it, --overwrite begins it anew"_s.arg(
                m_target.displayName()));
    if (::ftruncate(m_file.get(), 0) != 0)
        return systemFailure(m_target.displayName());
    return {};
}

Result<LineWriter::Standing> LineWriter::resume()
{
    if (!m_target.isFile())
        return failure(u"%1 is no file, which --resume could read"_s.arg(m_target.displayName()));
    TRY(open());
    return readStanding();
}

Result<void> LineWriter::open()
{
    m_file = TRY(m_target.openToAppend());
    if (m_target.isFile())
        TRY(lock(m_file, m_target.displayName()));
    return {};
}

Result<LineWriter::Standing> LineWriter::readStanding() const
{
    Standing standing;
    QFile file;
    file.open(m_file.get(), QIODevice::ReadOnly);
    qint64 kept = 0;
    for (qint64 number = 1; !file.atEnd(); ++number) {
        const QByteArray line = ResultLine::next(file);
        if (file.error() != QFile::NoError)
            return failure(m_target.displayName() + u": "_s + file.errorString());
        if (!line.endsWith('\n') && file.atEnd() && ResultLine::isTorn(line)) {
            standing.wasTorn = true;
            break;
        }
        const auto result = ResultLine::read(line);
        if (!result || !line.endsWith('\n'))
            return failure(u"%1: line %2 is none of check --format jsonl (%3), and nothing was "
                           u"written; name another file"_s.arg(
                               m_target.displayName(), QString::number(number),
                               result ? u"it has no end"_s : result.error().description));
        standing.status = worse(standing.status, result->file.status());
        standing.names.insert(result->file.name);
        kept += line.size();
    }
    if (standing.wasTorn && ::ftruncate(m_file.get(), kept) != 0)
        return systemFailure(m_target.displayName());
    return standing;
}

Result<void> LineWriter::add(const QByteArray& line)
{
    const std::scoped_lock lock(m_mutex);
    TRY(Output::writeThrough(m_file.get(), line, m_target.displayName()));
    if (m_target.isFile() && ::fdatasync(m_file.get()) != 0)
        return systemFailure(m_target.displayName());
    return {};
}

} // namespace vantroque
