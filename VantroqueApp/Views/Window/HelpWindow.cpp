#include "VantroqueApp/Views/Window/HelpWindow.h"

#include "VantroqueApp/Views/Controls/IconButton.h"
#include "VantroqueApp/Views/Controls/ToolButton.h"
#include "VantroqueApp/Views/Window/HelpPage.h"

#include <QBoxLayout>
#include <QImage>
#include <QKeyEvent>
#include <QMenu>
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

HelpWindow::HelpWindow(QWidget* owner) : QWidget(owner, Qt::Window), m_page(new PageBrowser(this))
{
    constexpr QSize size(720, 680);
    setObjectName(u"helpWindow"_s);
    setAttribute(Qt::WA_StyledBackground);
    setAccessibleName(u"Help"_s);
    m_page->setObjectName(u"help"_s);
    m_page->setAccessibleName(u"Page"_s);
    m_page->setOpenExternalLinks(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(bar());
    layout->addWidget(m_page, 1);
    connect(m_page, &QTextBrowser::sourceChanged, this,
            [this] { setWindowTitle(m_page->documentTitle()); });
    resize(size);
}

QWidget* HelpWindow::bar()
{
    constexpr int high = 44;
    auto* bar = new QWidget(this);
    bar->setObjectName(u"header"_s);
    bar->setAttribute(Qt::WA_StyledBackground);
    bar->setFixedHeight(high);
    auto* back = IconButton::make(u"back"_s, u"Back"_s, u"To the page before  (Alt+Left)"_s, bar);
    auto* forward =
        IconButton::make(u"chevr"_s, u"Forward"_s, u"To the page after  (Alt+Right)"_s, bar);
    auto* all = new ToolButton(u"list"_s, u"Contents"_s, bar);
    all->setPlain();
    all->setFocusPolicy(Qt::TabFocus);
    all->setToolTip(u"All pages of the guide"_s);
    all->setMenu(contents());
    back->setEnabled(false);
    forward->setEnabled(false);
    for (QToolButton* button : std::initializer_list<QToolButton*>{back, forward, all})
        button->installEventFilter(this);
    connect(back, &QToolButton::clicked, m_page, &QTextBrowser::backward);
    connect(forward, &QToolButton::clicked, m_page, &QTextBrowser::forward);
    connect(m_page, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
    connect(m_page, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(12, 0, 12, 1);
    layout->setSpacing(4);
    layout->addWidget(back);
    layout->addWidget(forward);
    layout->addSpacing(4);
    layout->addWidget(all);
    layout->addStretch();
    return bar;
}

/// The page that is read is checked.
QMenu* HelpWindow::contents()
{
    auto* menu = new QMenu(this);
    menu->setAccessibleName(u"Contents"_s);
    for (const HelpPage& page : HelpPage::all()) {
        QAction* action = menu->addAction(page.title);
        action->setCheckable(true);
        const auto check = [this, action, page] {
            action->setChecked(m_page->source().fileName() == page.file.fileName());
        };
        connect(m_page, &QTextBrowser::sourceChanged, action, check);
        connect(action, &QAction::triggered, this, [this, check, page] {
            m_page->setSource(page.file);
            check();
        });
    }
    return menu;
}

void HelpWindow::show(const QUrl& page)
{
    m_page->setSource(page);
    QWidget::show();
    raise();
    activateWindow();
    m_page->setFocus();
}

/// Of keys on a button, which would go to its neighbour. The page takes these by itself.
bool HelpWindow::eventFilter(QObject*, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.modifiers() != Qt::AltModifier)
        return false;
    if (key.key() == Qt::Key_Left)
        m_page->backward();
    else if (key.key() == Qt::Key_Right)
        m_page->forward();
    else
        return false;
    return true;
}

void HelpWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        hide();
    else
        QWidget::keyPressEvent(event);
}

} // namespace vantroque
