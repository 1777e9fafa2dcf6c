#include "VantroqueApp/Views/Profiles/ProfilesPanel.h"

#include "VantroqueApp/Views/Profiles/OwnProfilesFoot.h"
#include "VantroqueApp/Views/Profiles/ProfileList.h"
#include "VantroqueApp/Views/Profiles/SavedSets.h"
#include "VantroqueApp/Views/Profiles/SearchField.h"
#include "VantroqueApp/Views/Style/Theme.h"
#include "VantroqueApp/Views/Style/Type.h"

#include <QApplication>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>

#include <algorithm>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

constexpr int panelWidth = 360;
constexpr int top = 44;
constexpr int besides = 56;    ///< What it leaves of the window's height.
constexpr int rightInset = 12; ///< As the header has it.
constexpr int padding = 12;
constexpr int setsWidth = panelWidth - 2 * padding - 6; ///< Beside a bar to scroll them.

} // namespace

ProfilesPanel::ProfilesPanel(ProfileChoice& choice, ProfileSets& sets,
                             std::function<void()> readAgain, const QWidget& opener,
                             QWidget& window)
    : QWidget(&window),
      m_choice(choice),
      m_readAgain(std::move(readAgain)),
      m_opener(opener),
      m_search(new SearchField(u"Find a platform"_s, this)),
      m_sets(new SavedSets(sets, setsWidth)),
      m_setsArea(new QScrollArea(this)),
      m_list(new ProfileList(choice, this)),
      m_none(
          Type::label(u"No platform matches"_s, Type::body, QFont::Normal, Type::Ink::text2, this)),
      m_own(new OwnProfilesFoot(choice, this))
{
    hide();
    setAccessibleName(u"Profiles"_s);
    m_head = head();
    m_foot = foot();
    m_none->setAlignment(Qt::AlignCenter);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(0);
    layout->addWidget(m_head);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_none, 1);
    layout->addWidget(m_own);
    layout->addWidget(m_foot);
    window.installEventFilter(this);
    connect(m_search, &QLineEdit::textChanged, this, &ProfilesPanel::search);
    connect(m_search, &QLineEdit::returnPressed, m_list, &ProfileList::enter);
    connect(m_list, &ProfileList::leftUpwards, m_search, qOverload<>(&QWidget::setFocus));
    connect(m_list, &ProfileList::typed, this, [this](const QString& text) {
        m_search->setFocus(Qt::OtherFocusReason);
        m_search->insert(text);
    });
    connect(m_list, &ProfileList::allWanted, this, [this] { selectAll(true); });
    connect(&choice, &ProfileChoice::changed, this, &ProfilesPanel::refresh);
    connect(&choice, &ProfileChoice::renewed, this, &ProfilesPanel::takeRenewed);
    connect(m_own, &OwnProfilesFoot::heightChanged, this, &ProfilesPanel::place);
    connect(m_sets, &SavedSets::heightChanged, this, &ProfilesPanel::place);
    refresh();
    place();
}

QWidget* ProfilesPanel::head()
{
    auto* head = new QWidget(this);
    auto* layout = new QVBoxLayout(head);
    layout->setContentsMargins(padding - 1, padding - 1, padding - 1, padding);
    layout->setSpacing(0);
    layout->addWidget(m_search);
    layout->addSpacing(padding - 1);
    layout->addWidget(
        Type::label(u"Saved sets"_s, Type::caption, QFont::Normal, Type::Ink::text2, head));
    layout->addSpacing(8);
    m_setsArea->setObjectName(u"sets"_s);
    m_setsArea->setWidget(m_sets);
    m_setsArea->setFrameShape(QFrame::NoFrame);
    m_setsArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_setsArea->setFocusPolicy(Qt::NoFocus);
    m_setsArea->viewport()->setAutoFillBackground(false);
    m_sets->setAutoFillBackground(false);
    layout->addWidget(m_setsArea);
    return head;
}

QWidget* ProfilesPanel::foot()
{
    constexpr int footHeight = 48;
    auto* foot = new QWidget(this);
    foot->setObjectName(u"panelFoot"_s);
    foot->setAttribute(Qt::WA_StyledBackground);
    foot->setFixedHeight(footHeight);
    m_count = Type::label({}, Type::caption, QFont::Normal, Type::Ink::text1, foot);
    m_count->setAccessibleName(u"Chosen platforms"_s);
    const auto button = [&](const QString& text, bool on) {
        auto* made = new QPushButton(text, foot);
        made->setProperty("kind", u"small"_s);
        made->setFont(Type::text(Type::caption, QFont::Medium));
        made->setFocusPolicy(Qt::TabFocus);
        made->setAccessibleName(text);
        connect(made, &QPushButton::clicked, this, [this, on] { selectAll(on); });
        return made;
    };
    m_all = button(u"Select All"_s, true);
    m_nothing = button(u"Select None"_s, false);
    auto* layout = new QHBoxLayout(foot);
    layout->setContentsMargins(padding, 0, padding - 1, 0);
    layout->setSpacing(padding);
    layout->addWidget(m_count, 1);
    layout->addWidget(m_all);
    layout->addWidget(m_nothing);
    return foot;
}

void ProfilesPanel::open()
{
    if (isVisible())
        return;
    m_before = window()->focusWidget();
    m_search->clear();
    m_list->rows().judge(QDateTime::currentDateTimeUtc());
    search();
    m_listHeight = m_list->wholeHeight();
    place();
    show();
    raise();
    m_search->setFocus(Qt::PopupFocusReason);
    qApp->installEventFilter(this);
    Q_EMIT openChanged(true);
    m_readAgain();
}

void ProfilesPanel::close()
{
    if (!isVisible())
        return;
    qApp->removeEventFilter(this);
    m_sets->stopNaming();
    const bool hadFocus = isAncestorOf(window()->focusWidget());
    hide();
    if (hadFocus && m_before)
        m_before->setFocus(Qt::PopupFocusReason);
    Q_EMIT openChanged(false);
}

void ProfilesPanel::search()
{
    m_list->rows().setSearch(m_search->text());
    const int hits = m_list->rows().hits();
    m_search->setCount(hits);
    m_list->setVisible(hits > 0);
    m_none->setVisible(hits == 0);
    m_list->scrollToTop();
}

void ProfilesPanel::selectAll(bool on)
{
    std::set<QString> ids;
    if (on)
        for (const Profile& profile : m_choice.profiles())
            ids.insert(profile.id);
    m_choice.setEnabledProfileIDs(ids);
}

void ProfilesPanel::takeRenewed()
{
    search();
    m_listHeight = m_list->wholeHeight();
    place();
    refresh();
}

void ProfilesPanel::refresh()
{
    const auto count = m_choice.enabledProfiles().size();
    m_count->setText(count == 0 ? u"No platforms selected"_s
                                : u"Checking %1 platforms"_s.arg(count));
    m_all->setEnabled(count < m_choice.profiles().size());
    m_nothing->setEnabled(count > 0);
}

/// As high as its content, where the window has that much room. A search leaves it as it is.
void ProfilesPanel::place()
{
    const QWidget& window = *parentWidget();
    constexpr int mostSets = 128; // four lines of them
    m_setsArea->setFixedHeight(std::min(m_sets->height(), mostSets));
    m_own->setFixedHeight(m_own->heightAt(panelWidth - 2));
    const int wanted =
        m_head->sizeHint().height() + m_listHeight + m_own->height() + m_foot->height() + 2;
    setGeometry(window.width() - rightInset - panelWidth, top, panelWidth,
                std::min(window.height() - besides, wanted));
    m_head->layout()->activate();
    layout()->activate();
}

bool ProfilesPanel::event(QEvent* event)
{
    // Back from the editor, where a profile was written.
    if (event->type() == QEvent::WindowActivate && isVisible())
        m_readAgain();
    // What a key does here it does not do in the window.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if ((key.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0
            && (key.key() < Qt::Key_F1 || key.key() > Qt::Key_F35))
            event->accept();
        return true;
    }
    return QWidget::event(event);
}

bool ProfilesPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize && isVisible())
        place();
    if (event->type() == QEvent::KeyPress && watched == m_search
        && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down) {
        m_list->enter();
        return true;
    }
    if (event->type() == QEvent::MouseButtonPress && watched->isWidgetType()) {
        const auto& pressed = static_cast<const QWidget&>(*watched);
        const bool isOutside = pressed.window() == window() && &pressed != this
                               && !isAncestorOf(&pressed) && &pressed != &m_opener;
        if (isOutside)
            close();
    }
    return false;
}

/// The keyboard stays in it while it is open.
bool ProfilesPanel::focusNextPrevChild(bool next)
{
    QWidget* from = window()->focusWidget();
    if (from == nullptr || !isAncestorOf(from))
        return QWidget::focusNextPrevChild(next);
    for (QWidget* to = from;;) {
        to = next ? to->nextInFocusChain() : to->previousInFocusChain();
        if (to == from)
            return true;
        if (isAncestorOf(to) && to->isVisible() && to->isEnabled()
            && (to->focusPolicy() & Qt::TabFocus) != 0 && to->focusProxy() == nullptr) {
            to->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    }
}

void ProfilesPanel::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape)
        return QWidget::keyPressEvent(event);
    if (m_sets->isNaming())
        m_sets->stopNaming();
    else if (!m_search->text().isEmpty())
        m_search->clear();
    else
        close();
}

void ProfilesPanel::paintEvent(QPaintEvent*)
{
    constexpr double radius = 10;
    const Theme& theme = Theme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(theme.controlEdge);
    painter.setBrush(theme.card);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

} // namespace vantroque
