#include "VantroqueApp/Model/Choices/AppearanceChoice.h"

#include "Base/RecordCoding.h"

#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

QString key()
{
    return u"appearance"_s;
}

AppearanceMode stored(const UserDefaults& defaults)
{
    const auto text = defaults.text(key());
    const auto mode = RecordCoding::decode<AppearanceMode>(text ? QJsonValue(*text) : QJsonValue());
    return mode ? *mode : AppearanceMode::dark;
}

} // namespace

AppearanceChoice::AppearanceChoice(UserDefaults& defaults)
    : m_defaults(defaults), m_mode(stored(defaults))
{
}

void AppearanceChoice::setMode(AppearanceMode mode)
{
    m_defaults.setText(key(), RecordCoding::key(enumName(mode)));
    if (std::exchange(m_mode, mode) != mode)
        Q_EMIT changed();
}

} // namespace vantroque
