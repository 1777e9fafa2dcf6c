#include "VantroqueApp/Views/Player/TransportKeys.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTextEdit>

#include <algorithm>

namespace vantroque {

namespace {

/// What is held down with the key; that it lies on the keypad makes no difference.
Qt::KeyboardModifiers modifiers(const QKeyEvent& event)
{
    return event.modifiers() & ~Qt::KeypadModifier;
}

bool isTextEditor(const QWidget* widget)
{
    return qobject_cast<const QLineEdit*>(widget) != nullptr
           || qobject_cast<const QTextEdit*>(widget) != nullptr
           || qobject_cast<const QPlainTextEdit*>(widget) != nullptr
           || qobject_cast<const QAbstractSpinBox*>(widget) != nullptr;
}

bool zoomBy(const QKeyEvent& event, const TransportActions& actions)
{
    if (!actions.zoom)
        return false;
    switch (event.key()) {
    case Qt::Key_Equal:
    case Qt::Key_Plus: actions.zoom(ZoomCommand::zoomIn); return true;
    case Qt::Key_Minus:
    case Qt::Key_Underscore: actions.zoom(ZoomCommand::zoomOut); return true;
    default: return false;
    }
}

bool paste(const TransportActions& actions)
{
    const auto rate = actions.timecode().rate();
    const auto time = Timecode::parse(QApplication::clipboard()->text(), rate);
    if (time)
        actions.seek(*time);
    return time.has_value();
}

template<typename Action, typename... Arguments>
bool call(const Action& action, Arguments... arguments)
{
    if (!action)
        return false;
    action(arguments...);
    return true;
}

/// With Ctrl alone.
bool command(const QKeyEvent& event, const TransportActions& actions)
{
    switch (event.key()) {
    case Qt::Key_C: QApplication::clipboard()->setText(actions.timecode().text()); return true;
    case Qt::Key_V: return paste(actions);
    case Qt::Key_0: return call(actions.zoom, ZoomCommand::fit);
    case Qt::Key_1: return call(actions.zoom, ZoomCommand::actualPixels);
    case Qt::Key_Z: return actions.bringBack && actions.bringBack();
    case Qt::Key_F: return !event.isAutoRepeat() && call(actions.fullScreen);
    case Qt::Key_Left:
    case Qt::Key_Right: return call(actions.toMark, event.key() == Qt::Key_Right);
    default: return false;
    }
}

bool toProblem(const QKeyEvent& event, const TransportActions& actions)
{
    return event.key() == Qt::Key_N && !event.isAutoRepeat() && !actions.isComposing()
           && call(actions.toProblem, modifiers(event) == Qt::NoModifier);
}

/// The keys that move the playhead by frames. They repeat while they are held.
bool move(const QKeyEvent& event, const TransportActions& actions)
{
    constexpr std::int64_t far = 10;
    const std::int64_t by = modifiers(event) == Qt::ShiftModifier ? far : 1;
    if (actions.isComposing())
        return false;
    switch (event.key()) {
    case Qt::Key_Left: actions.step(-by); return true;
    case Qt::Key_Right: actions.step(by); return true;
    case Qt::Key_Home: actions.jump(false); return true;
    case Qt::Key_End: actions.jump(true); return true;
    default: return false;
    }
}

} // namespace

TransportKeys& TransportKeys::shared()
{
    static TransportKeys keys;
    return keys;
}

void TransportKeys::registerActions(const QUuid& id, QWidget& window, TransportActions actions)
{
    if (m_registrations.empty())
        qApp->installEventFilter(this);
    Registration registration{.id = id, .window = &window, .actions = std::move(actions)};
    const auto earlier = std::ranges::find(m_registrations, id, &Registration::id);
    if (earlier != m_registrations.end())
        *earlier = std::move(registration);
    else
        m_registrations.push_back(std::move(registration));
}

void TransportKeys::unregister(const QUuid& id)
{
    std::erase_if(m_registrations, [&](const Registration& each) { return each.id == id; });
    if (!m_registrations.empty())
        return;
    if (qApp != nullptr)
        qApp->removeEventFilter(this);
    m_kHeld = false;
}

const TransportActions* TransportKeys::actionsFor(const QWidget& view) const
{
    const auto found = std::ranges::find_if(
        m_registrations, [&](const Registration& each) { return each.window == view.window(); });
    return found == m_registrations.end() ? nullptr : &found->actions;
}

bool TransportKeys::eventFilter(QObject* watched, QEvent* event)
{
    // It may be let go of in another window.
    if (event->type() == QEvent::WindowDeactivate)
        m_kHeld = false;
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if (!isKey || !watched->isWidgetType())
        return false;
    const auto& view = static_cast<const QWidget&>(*watched);
    const TransportActions* actions = actionsFor(view);
    // What a key does may end the registration.
    return actions != nullptr
           && handle(*view.window(), static_cast<const QKeyEvent&>(*event),
                     TransportActions(*actions));
}

/// True for a key that is taken.
bool TransportKeys::handle(const QWidget& window, const QKeyEvent& event,
                           const TransportActions& actions)
{
    const bool isPress = event.type() == QEvent::KeyPress;
    const auto held = modifiers(event);
    if (isPress && event.key() == Qt::Key_Z) {
        if (held == Qt::ControlModifier && actions.undo && actions.undo())
            return true;
        if (held == (Qt::ControlModifier | Qt::ShiftModifier) && actions.redo && actions.redo())
            return true;
    }
    const QWidget* focused = window.focusWidget();
    if (m_editingFields > 0 || isTextEditor(focused)) {
        m_kHeld = false;
        return false;
    }
    if (!isPress) {
        if (event.key() == Qt::Key_K && !event.isAutoRepeat())
            m_kHeld = false;
        return false;
    }
    // An open menu is walked with the keys of the transport.
    return qobject_cast<const QMenuBar*>(focused) == nullptr && press(event, actions);
}

bool TransportKeys::press(const QKeyEvent& event, const TransportActions& actions)
{
    const auto held = modifiers(event);
    if ((held & ~Qt::ShiftModifier) == Qt::ControlModifier && zoomBy(event, actions))
        return true;
    if (held == Qt::ControlModifier)
        return command(event, actions);
    if ((held & ~Qt::ShiftModifier) == Qt::NoModifier) {
        if (move(event, actions) || toProblem(event, actions))
            return true;
        if (event.key() == Qt::Key_Escape)
            return call(actions.escape);
    }
    return held == Qt::NoModifier && !actions.isComposing() && pressLetter(event, actions);
}

bool TransportKeys::pressLetter(const QKeyEvent& event, const TransportActions& actions)
{
    if (event.key() == Qt::Key_K)
        m_kHeld = true; // also by a key that repeats
    if (event.isAutoRepeat())
        return false;
    switch (event.key()) {
    case Qt::Key_Space: actions.togglePlay(); return true;
    case Qt::Key_J: actions.shuttle(ShuttleState::Direction::backward, m_kHeld); return true;
    case Qt::Key_K: actions.shuttleStop(); return true;
    case Qt::Key_L: actions.shuttle(ShuttleState::Direction::forward, m_kHeld); return true;
    default: return false;
    }
}

TransportKeysModifier::TransportKeysModifier(QWidget& view, TransportActions actions)
    : QObject(&view), m_view(view), m_actions(std::move(actions))
{
    view.installEventFilter(this);
    if (view.isVisible())
        TransportKeys::shared().registerActions(m_id, *view.window(), m_actions);
}

TransportKeysModifier::~TransportKeysModifier()
{
    TransportKeys::shared().unregister(m_id);
}

bool TransportKeysModifier::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Show)
        TransportKeys::shared().registerActions(m_id, *m_view.window(), m_actions);
    else if (event->type() == QEvent::Hide)
        TransportKeys::shared().unregister(m_id);
    return false;
}

TransportKeysPause::TransportKeysPause()
{
    ++TransportKeys::shared().m_editingFields;
}

TransportKeysPause::~TransportKeysPause()
{
    --TransportKeys::shared().m_editingFields;
}

} // namespace vantroque
