#pragma once

#include "VantroqueCLI/Arguments.h"
#include "VantroqueCLI/CheckReports.h"
#include "VantroqueCLI/FilmFiling.h"
#include "VantroqueCLI/Settling.h"
#include "VantroqueCLI/ToldOnce.h"
#include "VantroqueCLI/WatchedFolder.h"

#include <chrono>
#include <string>
#include <vector>

namespace vantroque {

/// Takes the films of a folder one after the other, each when it stands still and nobody writes it.
/// What it is made of must outlive it.
class Watch {
public:
    struct Options {
        std::chrono::seconds settle;
        std::string format; ///< Of the reports.
        bool isOnce = false;
    };

    Watch(const Arguments& arguments, const WatchedFolder& folder, const FilmFiling& filing,
          const std::vector<Profile>& profiles, RecognizerPool& recognizers, Options options);

    /// Does what is there and stands still. Fails when the folder cannot be read.
    Result<ExitStatus> once();
    /// Ends when the folder cannot be read any more, and then fails.
    Result<ExitStatus> forever();

private:
    using Film = Settling::Film;

    Result<void> look();
    Result<void> take(const Film& film);
    bool isAtRest(const Film& film);
    Result<void> analyse(const Film& film);
    void finish(const Film& film, CheckedFile& checked);
    bool isFinal(const Film& film, const CheckedFile& checked);
    FilmFiling::Outcome file(const Film& film, CheckedFile& checked);
    void goesOn(const Film& film);
    void tell(const Film& film, const FilmFiling::Filed& filed, const QString& line);

    const Arguments& m_arguments;
    const WatchedFolder& m_folder;
    const FilmFiling& m_filing;
    const std::vector<Profile>& m_profiles;
    RecognizerPool& m_recognizers;
    const Options m_options;
    Settling m_settling;
    ToldOnce m_told;
    ExitStatus m_status = ExitStatus::passed; ///< Of what has been done so far.
};

} // namespace vantroque
