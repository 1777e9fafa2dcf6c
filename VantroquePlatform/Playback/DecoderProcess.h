#pragma once

#include "Base/FileDescriptor.h"
#include "Base/Result.h"
#include "Playback/PlayProtocol.h"
#include "Playback/PlaybackEngine.h"

#include <filesystem>
#include <optional>
#include <sys/types.h>

namespace vantroque {

/// The program vantroque-play at work on one file, and the socket to it. It inherits nothing else;
/// it is killed and reaped when this value ends, without anybody waiting for that.
class DecoderProcess {
public:
    /// Beside the running program.
    static std::filesystem::path program();

    static Result<DecoderProcess> start(const std::filesystem::path& program,
                                        const PlaybackSource& source);
    DecoderProcess(DecoderProcess&& other) noexcept;
    DecoderProcess& operator=(DecoderProcess&& other) noexcept;
    ~DecoderProcess();

    pid_t id() const { return m_process; }
    int socket() const { return m_socket.get(); }

    /// Never blocks; false when the decoder does not take it. A descriptor may go along.
    bool send(const PlayProtocol::Order& order, const FileDescriptor& along = {}) const;

    enum class Received { record, nothing, broken };
    /// Never blocks.
    Received receive(PlayProtocol::Told& told) const;

private:
    DecoderProcess(pid_t process, FileDescriptor socket)
        : m_process(process), m_socket(std::move(socket))
    {
    }

    pid_t m_process;
    FileDescriptor m_socket;
};

} // namespace vantroque
