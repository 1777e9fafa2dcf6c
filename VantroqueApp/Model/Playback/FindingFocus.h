#pragma once

#include "Draw/Overlay.h"
#include "Records/FileReview.h"

#include <QObject>
#include <QUuid>

#include <cstdint>
#include <optional>

namespace vantroque {

/// The note or the finding that the operator looks at, and the ring around its place. Main thread.
class FindingFocus : public QObject {
    Q_OBJECT

public:
    struct Highlight {
        Finding finding;
        std::int64_t first = 0; ///< Frames on which the ring shows, both included.
        std::int64_t last = 0;
        bool operator==(const Highlight&) const = default;
    };

    const std::optional<QUuid>& selectedCommentID() const { return m_comment; }
    const std::optional<QString>& selectedEventID() const { return m_event; }
    const std::optional<Highlight>& highlight() const { return m_highlight; }
    /// The ring on that frame.
    std::optional<Finding> findingAt(std::int64_t frame) const;

    void select(const QUuid& comment);
    void select(const SignalEvent& event);
    /// If it is the selected one.
    void forget(const QUuid& comment);
    void clear();

Q_SIGNALS:
    void changed();

private:
    void set(std::optional<QUuid> comment, std::optional<QString> event,
             std::optional<Highlight> highlight);

    std::optional<QUuid> m_comment;
    std::optional<QString> m_event;
    std::optional<Highlight> m_highlight;
};

} // namespace vantroque
