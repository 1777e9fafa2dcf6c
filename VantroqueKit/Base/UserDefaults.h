#pragma once

#include <QString>
#include <QStringList>

#include <future>
#include <map>
#include <mutex>
#include <optional>

namespace vantroque {

/// The operator's choices: a small per-user store of texts, lists of texts and switches under
/// dotted keys such as "profiles.enabled". Read once; what is set is written in the background,
/// since a disk may take longer over it than a window may. Its end waits for that. Writing is best
/// effort: a store that cannot be written forgets at exit and says nothing. One thread.
class UserDefaults {
public:
    /// The store of this user, under the XDG config folder.
    UserDefaults();
    /// A store in a file of its own.
    explicit UserDefaults(const QString& file);

    /// Nothing when the key is absent or holds something else; a list reads as its JSON text, too.
    std::optional<QString> text(const QString& key) const;
    std::optional<QStringList> textList(const QString& key) const;
    /// Whether a choice is on; one that was never made is off.
    bool isOn(const QString& key) const { return text(key) == QStringLiteral("true"); }
    void setText(const QString& key, const QString& value);
    void setTextList(const QString& key, const QStringList& value);
    void setOn(const QString& key, bool isOn)
    {
        setText(key, isOn ? QStringLiteral("true") : QStringLiteral("false"));
    }
    /// For a program that ends without its end.
    void waitUntilWritten();

private:
    using Texts = std::map<QString, QString>;

    void write();
    Texts takeUnwritten();

    const QString m_file;
    Texts m_texts;
    std::mutex m_mutex; ///< Guards what follows but the future.
    Texts m_unwritten;
    bool m_isWriting = false;
    std::future<void> m_writing;
};

} // namespace vantroque
