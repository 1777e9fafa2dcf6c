#include "VantroqueApp/Model/Appearance.h"

#include "Base/RecordCoding.h"

namespace vantroque::Appearance {

using namespace Qt::StringLiterals;

AppearanceMode load(const UserDefaults& defaults)
{
    const auto text = defaults.text(u"appearance"_s);
    const auto mode = RecordCoding::decode<AppearanceMode>(text ? QJsonValue(*text) : QJsonValue());
    return mode ? *mode : AppearanceMode::dark;
}

void save(AppearanceMode mode, UserDefaults& defaults)
{
    defaults.setText(u"appearance"_s, RecordCoding::key(enumName(mode)));
}

} // namespace vantroque::Appearance
