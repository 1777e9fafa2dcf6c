#pragma once

#include "Base/UserDefaults.h"

#include <QObject>

namespace vantroque {

/// Who signs the notes: the name that the operator gave, under "review.author" of the user
/// defaults, or else the one that the system knows the user by. Main thread.
class NoteAuthor : public QObject {
    Q_OBJECT

public:
    /// `defaults` must outlive it.
    explicit NoteAuthor(UserDefaults& defaults);

    /// Nothing where nobody knows a name.
    std::optional<QString> name() const;
    /// Remembers another name; an empty one goes back to that of the system.
    void setName(const QString& name);

Q_SIGNALS:
    void changed();

private:
    UserDefaults& m_defaults;
    const QString m_systemName;
    QString m_given;
};

} // namespace vantroque
