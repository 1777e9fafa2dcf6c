#include "VantroqueApp/Model/Choices/NoteAuthor.h"

#include <QFile>

#include <array>
#include <pwd.h>
#include <unistd.h>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

QString key()
{
    return u"review.author"_s;
}

/// The full name where the account has one, else the account's.
QString systemName()
{
    constexpr std::size_t room = 16'384;
    std::array<char, room> texts{};
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, texts.data(), texts.size(), &found) != 0
        || found == nullptr)
        return {};
    const QString full = QFile::decodeName(entry.pw_gecos).section(u',', 0, 0).trimmed();
    return full.isEmpty() ? QFile::decodeName(entry.pw_name) : full;
}

} // namespace

NoteAuthor::NoteAuthor(UserDefaults& defaults)
    : m_defaults(defaults),
      m_systemName(systemName()),
      m_given(defaults.text(key()).value_or(QString()).trimmed())
{
}

std::optional<QString> NoteAuthor::name() const
{
    const QString& name = m_given.isEmpty() ? m_systemName : m_given;
    return name.isEmpty() ? std::nullopt : std::optional(name);
}

void NoteAuthor::setName(const QString& name)
{
    const QString given = name.simplified();
    m_defaults.setText(key(), given);
    if (std::exchange(m_given, given) != given)
        Q_EMIT changed();
}

} // namespace vantroque
