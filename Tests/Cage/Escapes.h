#pragma once

#include "Support/Media.h"
#include "Support/TestFolder.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace vantroque {

/// What a tool tries that somebody else has taken over. Each attempt is first made with the cage
/// open, where it must work, and then closed with the rights of several versions of Landlock.
class Escapes : public testing::Test {
protected:
    using Words = std::vector<std::string>;

    void SetUp() override;

    static constexpr std::array versions{"1", "3", "7"};
    static constexpr const char* open = "off";

    /// The files as they are before each attempt. The film and the folder are open to the tool.
    void lay() const;

    /// The status of one deed of the prisoner.
    int status(const Words& deed, const std::string& cage) const;
    /// Not to be done in the cage, and to be done without.
    void expectStopped(const Words& deed) const;
    void expectLeftOpen(const Words& deed) const;

    struct Ran {
        int status = -1;
        QByteArray output;
    };
    Ran ffmpeg(const Words& arguments, const std::string& cage) const;
    /// ffmpeg gives pictures of what it reads, or none.
    void expectUnread(const Words& input) const;
    /// ffmpeg writes there, or fails.
    void expectUnwritten(const Words& output) const;

    const TestFolder m_folder;
    const std::filesystem::path m_film = m_folder / "film.mov";
    const std::filesystem::path m_other = m_folder / "other.txt";
    const std::filesystem::path m_scratch = m_folder / "scratch";
    QByteArray m_bytes = "film"; ///< Of the film.
    std::uint32_t m_held = 0;    ///< What of the cage holds on this kernel, bits of `Cage::Held`.

private:
    void expectUntouched(const std::vector<std::string>& names) const;
};

} // namespace vantroque
