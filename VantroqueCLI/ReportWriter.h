#pragma once

#include "Base/FileDescriptor.h"
#include "Base/Result.h"
#include "Base/ScratchFolder.h"
#include "VantroqueCLI/CheckReports.h"
#include "VantroqueCLI/OutputTarget.h"

#include <functional>
#include <map>
#include <mutex>
#include <optional>

namespace vantroque {

/// The report of a call, which takes the files as they are done and has them in the order of the
/// call. What is told of thousands of files is large: it lies in a scratch file until all is there.
/// Any thread.
class ReportWriter {
public:
    ReportWriter(ReportForm form, OutputTarget target);

    /// Has each part go out as soon as it and those before it are there. `print` does it.
    void tellAtOnce(std::function<Result<void>(const QByteArray&)> print);
    /// Needed unless it tells at once. Fails when there is no room for scratch.
    Result<void> open();

    Result<void> add(std::size_t index, const CheckedFile& file);
    /// The same of a part that is made.
    Result<void> add(std::size_t index, QByteArray part);
    /// To be called when all files are there.
    Result<void> finish();

private:
    Result<void> append(const QByteArray& bytes);

    const ReportForm m_form;
    const OutputTarget m_target;
    std::function<Result<void>(const QByteArray&)> m_print;
    std::mutex m_mutex; ///< Guards what follows.
    std::optional<ScratchFolder> m_scratch;
    FileDescriptor m_file;
    std::map<std::size_t, QByteArray> m_waiting; ///< Parts whose turn has not come.
    std::size_t m_next = 0;
};

} // namespace vantroque
