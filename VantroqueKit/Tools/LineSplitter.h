#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace vantroque {

/// Cuts a stream of bytes into lines. Both LF and CR end a line, because ffmpeg ends its progress
/// lines with CR; empty lines are skipped and lines that are not valid UTF-8 dropped. A last line
/// without its end is never delivered. Not thread-safe.
class LineSplitter {
public:
    /// The line is UTF-8 without its end, and valid during the call only.
    using OnLine = std::function<void(std::string_view)>;

    explicit LineSplitter(OnLine onLine) : m_onLine(std::move(onLine)) {}

    void feed(std::string_view bytes);
    /// The bytes after the last line end.
    const std::string& pending() const { return m_pending; }

private:
    OnLine m_onLine;
    std::string m_pending;
};

} // namespace vantroque
