#pragma once

#include "VantroqueCLI/CheckReports.h"

#include <filesystem>
#include <sys/stat.h>

/// The report that lies beside a film under its name and a little more. Its last lines say of which
/// file it is: size, number on its disk, and when its bytes and its entry there last changed.
namespace vantroque::FilmReport {

/// "json", "text" and "junit".
bool isFormat(const std::string& format);
/// The name of the report of a film of that name.
std::string nameOf(const std::string& film, const std::string& format);
/// The whole report. Fails when a record has no such form.
Result<QByteArray> of(const CheckedFile& film, const std::string& format,
                      const struct stat& status);
/// Whether a report of any format is at `path`, on a file of that status. Once the film has been
/// moved, its status is another.
bool isOn(const std::filesystem::path& path, const struct stat& status);
/// Whether a report lies beside that film.
bool isBeside(const std::filesystem::path& film);

} // namespace vantroque::FilmReport
