#include "Base/UserDefaults.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardPaths>

namespace vantroque {

UserDefaults::UserDefaults()
    : UserDefaults(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
                   + QStringLiteral("/Vantroque/vantroque.ini"))
{
}

UserDefaults::UserDefaults(const QString& file) : m_settings(file, QSettings::IniFormat)
{
}

std::optional<QString> UserDefaults::text(const QString& key) const
{
    const QVariant value = m_settings.value(key);
    if (value.typeId() != QMetaType::QString)
        return std::nullopt;
    return value.toString();
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
    m_settings.setValue(key, value);
}

void UserDefaults::setTextList(const QString& key, const QStringList& value)
{
    setText(key,
            QString::fromUtf8(
                QJsonDocument(QJsonArray::fromStringList(value)).toJson(QJsonDocument::Compact)));
}

} // namespace vantroque
