#include "VantroqueCLI/OffscreenDrawing.h"

namespace vantroque {

OffscreenDrawing::Quiet::Quiet()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Of fonts that lack a script, and of folders for sockets.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
}

OffscreenDrawing::OffscreenDrawing() : m_application(m_count, m_names)
{
}

} // namespace vantroque
