#pragma once

#include "Print/Composition.h"
#include "Print/ReviewPDF.h"

/// The blocks of one file's section. What they hold must outlive them; frames are asked for as they
/// are drawn.
namespace vantroque::SectionBlocks {

using ReviewPDF::FileSection;
using ReviewPDF::Options;

/// All of them, in order.
std::vector<Block> all(const FileSection& section, const Options& options);

/// A frame, the names and sizes, and the operator's decision.
std::vector<Block> header(const FileSection& section, const Options& options);
/// What the file comes to, and what each platform says of it in a line.
std::vector<Block> verdict(const FileSection& section);
/// A comment beside its frame.
std::vector<Block> comment(const FileSection& section, const ReviewComment& comment,
                           const Options& options);
/// Every check of every platform.
std::vector<Block> results(const FileSection& section);

/// Small words over what follows.
std::vector<Block> heading(const QString& words);
Block gap(double height);

/// The reports of the platforms, then those of picture and sound and of the captions.
std::vector<ProfileReport> rows(const FileSection& section);

/// A frame in the middle of its slot; a grey slot with these words when there is none.
void drawFrame(QPainter& painter, const QRectF& slot, const QImage& frame, const QString& missing);
void drawHairline(QPainter& painter, double y);

} // namespace vantroque::SectionBlocks
