#include "Records/ColorMatrix.h"

#include <map>

namespace vantroque {

using namespace Qt::StringLiterals;

ResolvedMatrix resolveColorMatrix(const std::optional<QString>& colorSpace, int height)
{
    static const std::map<QString, ColorMatrix> matrices{
        {u"bt709"_s, ColorMatrix::bt709},     {u"smpte170m"_s, ColorMatrix::bt601},
        {u"bt470bg"_s, ColorMatrix::bt601},   {u"smpte240m"_s, ColorMatrix::bt601},
        {u"bt2020nc"_s, ColorMatrix::bt2020}, {u"bt2020c"_s, ColorMatrix::bt2020}};
    constexpr int firstHdHeight = 720;
    if (const auto found = matrices.find(colorSpace.value_or(QString())); found != matrices.end())
        return {found->second, false};
    return {height < firstHdHeight ? ColorMatrix::bt601 : ColorMatrix::bt709, true};
}

} // namespace vantroque
