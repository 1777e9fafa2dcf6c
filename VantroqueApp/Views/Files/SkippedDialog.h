#pragma once

#include "VantroqueApp/Model/Files/SkippedFile.h"

#include <vector>

class QWidget;

namespace vantroque::SkippedDialog {

/// Shows which files were not taken, and why.
void open(const std::vector<SkippedFile>& files, QWidget* parent);

} // namespace vantroque::SkippedDialog
