#pragma once

#include "VantroqueCLI/CheckReports.h"
#include "VantroqueCLI/Settling.h"
#include "VantroqueCLI/WatchedFolder.h"

#include <filesystem>
#include <optional>
#include <string>

namespace vantroque {

/// Moves films with their reports out of the watched folder. The report is there first and whole,
/// and names its film; the move of the film ends the work on it. So a kill in between leaves the
/// film in the watched folder, and its report tells the next one that only the move is missing.
/// Nothing is replaced: where a name is taken, film and report get a number.
class FilmFiling {
public:
    /// Fails, in words, when films cannot be moved into these folders, or come back from there.
    static Result<FilmFiling> between(const WatchedFolder& from, const std::string& done,
                                      const std::string& failed);

    /// A film as it was moved.
    struct Filed {
        std::filesystem::path film;
        bool passes = true; ///< It is in the folder of those that no platform fails.
    };
    /// Nothing when the film is not the one of that stamp any more, or is being written: it and
    /// both folders are as they were.
    using Outcome = Result<std::optional<Filed>>;

    /// Writes the report and moves the film by its verdict. `checked` gets the film's new name.
    Outcome file(const Settling::Film& film, CheckedFile& checked, const std::string& format) const;
    /// Only moves a film whose report is there from before. Nothing when there is none.
    Outcome goOn(const Settling::Film& film) const;

private:
    FilmFiling(std::filesystem::path from, std::filesystem::path done, std::filesystem::path failed)
        : m_from(std::move(from)), m_done(std::move(done)), m_failed(std::move(failed))
    {
    }

    enum class Move { done, nameTaken, filmChanged };
    Result<Move> move(const Settling::Film& film, const std::filesystem::path& to) const;
    Result<void> putBack(const std::string& name, const std::filesystem::path& from) const;
    Outcome goOn(const Settling::Film& film, std::filesystem::path report, bool passes) const;
    const std::filesystem::path& folder(bool passes) const { return passes ? m_done : m_failed; }

    std::filesystem::path m_from;
    std::filesystem::path m_done;
    std::filesystem::path m_failed;
};

} // namespace vantroque
