#pragma once

#include <QByteArray>

#include <string_view>

namespace vantroque {

/// Tells the headers of inputs and outputs in ffmpeg's log from what it measured. They hold the
/// file's name and tags, which could forge any line.
class LogHeaders {
public:
    /// Whether the next line of the log is part of a header.
    bool holds(std::string_view line);
    /// Whether the last line was inside a header. Complaints that begin with the file's name are
    /// held back as well, and are not.
    bool isInside() const { return m_inHeader; }

    /// The log without its headers.
    static QByteArray without(const QByteArray& log);

private:
    bool m_inHeader = false;
    bool m_aheadOfStreams = false;
};

} // namespace vantroque
