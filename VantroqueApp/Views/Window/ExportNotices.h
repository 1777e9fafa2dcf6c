#pragma once

namespace vantroque {

class Exports;
class NoticeBars;

/// Tells on bars how exports went: that of the last one goes when the next begins.
namespace ExportNotices {

/// Both must outlive the window.
void tell(Exports& exports, NoticeBars& bars);

} // namespace ExportNotices
} // namespace vantroque
