#pragma once

#include "Records/Profile.h"
#include "Text/RecognizerPool.h"
#include "VantroqueCLI/Arguments.h"

#include <memory>
#include <string>
#include <vector>

namespace vantroque {

/// Tesseract's codes of the languages in which text in the picture is read: those of
/// --text-language, or the user's default, or English.
std::vector<std::string> textLanguages(const Arguments& arguments);

/// Recognizers of these languages.
RecognizerPool::Start recognizerStart(const std::vector<std::string>& languages);

/// Those that a call asks for. Says why text cannot be read, when some profile asks for it, the
/// call has films decoded, and it cannot.
std::unique_ptr<RecognizerPool> startRecognizers(const Arguments& arguments,
                                                 const std::vector<Profile>& profiles);

/// Says why text cannot be read, when some profile asks for it and it cannot.
void complainIfTextCannotBeRead(RecognizerPool& recognizers, const std::vector<Profile>& profiles);

} // namespace vantroque
