#pragma once

namespace vantroque {

class NoticeBars;
class OpenPlayer;

/// Says that a note was deleted, as long as it can come back.
namespace NoteNotices {

/// Both must outlive the window.
void tell(OpenPlayer& open, NoticeBars& bars);

} // namespace NoteNotices
} // namespace vantroque
