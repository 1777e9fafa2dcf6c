#include "VantroqueApp/Views/Window/HelpReader.h"

#include <QDesktopServices>
#include <QImage>
#include <QProcess>
#include <QShortcut>
#include <QTextBrowser>
#include <QTextFrame>
#include <QTextFrameFormat>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// Pages with room around them, whatever led there, and with pictures that are made as small as
/// they ask for smoothly, which Qt does not.
class PageBrowser : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;

protected:
    void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override
    {
        constexpr int margin = 28;
        QTextBrowser::doSetSource(name, type);
        setWindowTitle(documentTitle());
        QTextFrameFormat format = document()->rootFrame()->frameFormat();
        format.setMargin(margin);
        document()->rootFrame()->setFrameFormat(format);
    }
    QVariant loadResource(int type, const QUrl& name) override
    {
        constexpr int widest = 640; // as the pages say
        QVariant found = QTextBrowser::loadResource(type, name);
        if (type != QTextDocument::ImageResource)
            return found;
        QImage picture = QImage::fromData(found.toByteArray());
        if (picture.width() <= widest)
            return found;
        const double ratio = devicePixelRatioF();
        picture = picture.scaledToWidth(std::min(picture.width(), qRound(widest * ratio)),
                                        Qt::SmoothTransformation);
        picture.setDevicePixelRatio(picture.width() / static_cast<double>(widest));
        return picture;
    }
};

} // namespace

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
    constexpr QSize size(720, 640);
    if (m_window == nullptr) {
        m_window = new PageBrowser(m_owner.window());
        m_window->setObjectName(u"help"_s);
        m_window->setWindowFlag(Qt::Window);
        m_window->setAccessibleName(u"Help"_s);
        m_window->setOpenExternalLinks(true);
        m_window->resize(size);
        auto* close = new QShortcut(Qt::Key_Escape, m_window);
        connect(close, &QShortcut::activated, m_window, &QWidget::hide);
    }
    m_window->setSource(file);
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

} // namespace vantroque
