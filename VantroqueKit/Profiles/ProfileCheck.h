#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/// What is wrong with a profile that somebody wrote. Pure, callable from any thread.
namespace vantroque::ProfileCheck {

struct Problem {
    enum class Kind {
        error, ///< The profile cannot be read.
        doubt  ///< It can, but hardly means what its writer meant.
    };

    Kind kind = Kind::doubt;
    int line = 1;    ///< Of the file, counted from 1.
    QString path;    ///< Such as ".video.codecs[0].codec"; empty for the whole.
    QString problem; ///< A sentence without its end.
};

/// In the order of lines; empty for a profile that is as it should be. After an error no doubts.
std::vector<Problem> problems(const QByteArray& text);

} // namespace vantroque::ProfileCheck
