#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

/// Generated test media. Made once, kept in a folder that all test programs share, and made anew
/// when the recipe changes. Throws with the tool's words when a file cannot be made.
namespace vantroque::Media {

struct Recipe {
    std::string name;                   ///< Of the file.
    std::vector<std::string> arguments; ///< Of ffmpeg, without the output file.
};

/// The file of that recipe.
std::filesystem::path make(const Recipe& recipe);

/// As `make`, for what takes more than one call of ffmpeg: `build` writes the file whose path it is
/// given. `key` must change whenever the content would.
std::filesystem::path make(const std::string& name, const std::vector<std::string>& key,
                           const std::function<void(const std::filesystem::path&)>& build);

/// Runs ffmpeg with these arguments.
void ffmpeg(const std::vector<std::string>& arguments);

/// Joins argument lists.
std::vector<std::string> operator+(std::vector<std::string> first,
                                   const std::vector<std::string>& second);

} // namespace vantroque::Media
