#include "Base/UserDefaults.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSettings>
#include <QStandardPaths>

#include <utility>

namespace vantroque {

UserDefaults::UserDefaults()
    : UserDefaults(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
                   + QStringLiteral("/Vantroque/vantroque.ini"))
{
}

UserDefaults::UserDefaults(const QString& file) : m_file(file)
{
    const QSettings stored(m_file, QSettings::IniFormat);
    for (const QString& key : stored.allKeys())
        if (const QVariant value = stored.value(key); value.typeId() == QMetaType::QString)
            m_texts[key] = value.toString();
}

std::optional<QString> UserDefaults::text(const QString& key) const
{
    const auto found = m_texts.find(key);
    return found == m_texts.end() ? std::nullopt : std::optional(found->second);
}

// Lists are kept as JSON text, because the format reads a list of one element back as a plain text
// and an empty one as nothing.
std::optional<QStringList> UserDefaults::textList(const QString& key) const
{
    const auto document = QJsonDocument::fromJson(text(key).value_or(QString()).toUtf8());
    if (!document.isArray())
        return std::nullopt;
    QStringList list;
    for (const QJsonValue& element : document.array()) {
        if (!element.isString())
            return std::nullopt;
        list.append(element.toString());
    }
    return list;
}

void UserDefaults::setText(const QString& key, const QString& value)
{
    m_texts[key] = value;
    const std::scoped_lock lock(m_mutex);
    m_unwritten[key] = value;
    if (!std::exchange(m_isWriting, true))
        m_writing = std::async(std::launch::async, [this] { write(); });
}

void UserDefaults::setTextList(const QString& key, const QStringList& value)
{
    setText(key,
            QString::fromUtf8(
                QJsonDocument(QJsonArray::fromStringList(value)).toJson(QJsonDocument::Compact)));
}

void UserDefaults::waitUntilWritten()
{
    if (m_writing.valid())
        m_writing.wait();
}

/// On a thread of its own. What is set meanwhile goes into the next round, all in one.
void UserDefaults::write()
{
    for (Texts texts = takeUnwritten(); !texts.empty(); texts = takeUnwritten()) {
        QSettings stored(m_file, QSettings::IniFormat);
        for (const auto& [key, text] : texts)
            stored.setValue(key, text);
        stored.sync();
    }
}

UserDefaults::Texts UserDefaults::takeUnwritten()
{
    const std::scoped_lock lock(m_mutex);
    m_isWriting = !m_unwritten.empty();
    return std::exchange(m_unwritten, {});
}

} // namespace vantroque
