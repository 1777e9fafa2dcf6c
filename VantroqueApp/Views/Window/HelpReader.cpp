#include "VantroqueApp/Views/Window/HelpReader.h"

#include "VantroqueApp/Views/Window/HelpWindow.h"

#include <QDesktopServices>
#include <QProcess>

namespace vantroque {

using namespace Qt::StringLiterals;

HelpReader::HelpReader(QWidget& owner) : QObject(&owner), m_owner(owner)
{
}

void HelpReader::show(const HelpPage& page)
{
    // Without a browser the desktop's opener says nothing and shows nothing.
    auto* asked = new QProcess(this);
    connect(asked, &QProcess::finished, this, [this, asked, file = page.file] {
        answer(file, !asked->readAllStandardOutput().trimmed().isEmpty());
        asked->deleteLater();
    });
    connect(asked, &QProcess::errorOccurred, this,
            [this, asked, file = page.file](QProcess::ProcessError error) {
                if (error != QProcess::FailedToStart)
                    return;
                answer(file, true); // nobody knows: the opener may
                asked->deleteLater();
            });
    asked->start(u"xdg-mime"_s, {u"query"_s, u"default"_s, u"text/html"_s});
}

void HelpReader::answer(const QUrl& file, bool hasBrowser)
{
    if (!hasBrowser || !QDesktopServices::openUrl(file))
        showHere(file);
}

void HelpReader::showHere(const QUrl& file)
{
    if (m_window == nullptr)
        m_window = new HelpWindow(m_owner.window());
    m_window->show(file);
}

} // namespace vantroque
