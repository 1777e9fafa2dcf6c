#pragma once

#include <QByteArray>
#include <QString>

#include <map>
#include <vector>

namespace vantroque {

/// Where in a JSON text its values stand, for messages to whoever wrote it. The text must be one
/// that `Json::parse` takes. In linear time.
class JsonPlaces {
public:
    explicit JsonPlaces(const QByteArray& text);

    /// The line of a value, counted from 1, by its path as `CodingError` has it; for what is not
    /// there that of what should hold it.
    int line(QString path) const;
    /// The paths of members whose name stands a second time in the same object, where the last one
    /// counts.
    const std::vector<QString>& repeated() const { return m_repeated; }

    /// The line that a byte is on, counted from 1.
    static int lineOf(const QByteArray& text, qsizetype byte);

private:
    std::map<QString, int> m_lines; ///< By path.
    std::vector<QString> m_repeated;
};

} // namespace vantroque
