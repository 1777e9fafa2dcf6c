#pragma once

#include "VantroqueApp/Model/Playback/TransportActions.h"

#include <QObject>
#include <QPointer>
#include <QUuid>
#include <QWidget>

#include <vector>

class QKeyEvent;

namespace vantroque {

/// Sees the keys of the application before any view, and gives those of the transport to the player
/// of the window that they were pressed in. Typing never reaches it. Main thread.
class TransportKeys : public QObject {
public:
    /// The one of the program.
    static TransportKeys& shared();

    /// Takes the place of an earlier registration of that id.
    void registerActions(const QUuid& id, QWidget& window, TransportActions actions);
    void unregister(const QUuid& id);

    /// What the window of a view offers; null where that is nothing.
    const TransportActions* actionsFor(const QWidget& view) const;

    /// K is held down, which makes J and L slow.
    bool kHeld() const { return m_kHeld; }
    /// While above 0 no key is taken, but for undo and redo.
    int editingFields() const { return m_editingFields; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    friend class TransportKeysPause;

    struct Registration {
        QUuid id;
        QPointer<QWidget> window;
        TransportActions actions;
    };

    TransportKeys() = default;
    bool handle(const QWidget& window, const QKeyEvent& event, const TransportActions& actions);
    bool press(const QKeyEvent& event, const TransportActions& actions);
    bool pressLetter(const QKeyEvent& event, const TransportActions& actions);

    std::vector<Registration> m_registrations;
    bool m_kHeld = false;
    int m_editingFields = 0;
};

/// Offers a view's actions for as long as the view is on screen.
class TransportKeysModifier : public QObject {
public:
    TransportKeysModifier(QWidget& view, TransportActions actions);
    ~TransportKeysModifier() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const QUuid m_id = QUuid::createUuid();
    QWidget& m_view;
    const TransportActions m_actions;
};

/// The transport's keys rest for as long as it lives: text is being entered.
class TransportKeysPause {
public:
    TransportKeysPause();
    TransportKeysPause(const TransportKeysPause&) = delete;
    TransportKeysPause& operator=(const TransportKeysPause&) = delete;
    ~TransportKeysPause();
};

} // namespace vantroque
