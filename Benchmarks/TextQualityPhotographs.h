#pragma once

namespace vantroque::TextQuality {

/// Reads clips of photographs, `perKind` of each kind with text and without, and prints how well
/// the text was found and timed, and what was made of words that belong to the scene.
void runPhotographs(int perKind);

} // namespace vantroque::TextQuality
