#include "Base/FilmTypes.h"

namespace vantroque::FilmTypes {

using namespace Qt::StringLiterals;

const QStringList& extensions()
{
    static const QStringList all{u"mp4"_s, u"mov"_s,  u"m4v"_s, u"mxf"_s, u"webm"_s,
                                 u"mpg"_s, u"mpeg"_s, u"avi"_s, u"mkv"_s};
    return all;
}

bool isFilm(const FileUrl& url)
{
    return extensions().contains(url.extension().toLower());
}

} // namespace vantroque::FilmTypes
