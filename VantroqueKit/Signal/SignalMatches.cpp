#include "Signal/SignalMatches.h"

#include <QRegularExpression>

namespace vantroque::SignalAnalyzer {

std::vector<QStringList> matches(const QString& pattern, const QString& text)
{
    const QRegularExpression expression(pattern, QRegularExpression::UseUnicodePropertiesOption);
    std::vector<QStringList> found;
    if (!expression.isValid())
        return found;
    for (const QRegularExpressionMatch& match : expression.globalMatch(text)) {
        QStringList groups;
        for (int group = 1; group <= match.lastCapturedIndex(); ++group)
            if (match.hasCaptured(group))
                groups << match.captured(group);
        found.push_back(groups);
    }
    return found;
}

std::optional<QString> firstMatch(const QString& pattern, const QString& text)
{
    const auto all = matches(pattern, text);
    if (all.empty() || all.front().isEmpty())
        return std::nullopt;
    return all.front().front();
}

} // namespace vantroque::SignalAnalyzer
