#pragma once

#include <QSettings>
#include <QString>
#include <QStringList>

#include <optional>

namespace vantroque {

/// The operator's choices: a small per-user store of texts and lists of texts under dotted keys
/// such as "profiles.enabled". Writing is best effort: a store that cannot be written forgets at
/// exit and says nothing. One thread.
class UserDefaults {
public:
    /// The store of this user, under the XDG config folder.
    UserDefaults();
    /// A store in a file of its own.
    explicit UserDefaults(const QString& file);

    /// Nothing when the key is absent or holds something else; a list reads as its JSON text, too.
    std::optional<QString> text(const QString& key) const;
    std::optional<QStringList> textList(const QString& key) const;
    void setText(const QString& key, const QString& value);
    void setTextList(const QString& key, const QStringList& value);

private:
    QSettings m_settings;
};

} // namespace vantroque
