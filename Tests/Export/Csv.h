#pragma once

#include "Export/MeasurementCSV.h"
#include "Support/TestFolder.h"

#include <map>

// Reading the measurement table as a spreadsheet does.

namespace vantroque::Csv {

/// The fields of a line: separated by commas, and what stands in double quotes is one field.
inline std::vector<std::string> fields(const QString& line)
{
    std::vector<std::string> found(1);
    bool isQuoted = false;
    for (const char c : line.toStdString())
        if (c == '"') {
            // A doubled quote inside a quoted field is one quote.
            if (!isQuoted && !found.back().empty())
                found.back() += c;
            isQuoted = !isQuoted;
        } else if (c == ',' && !isQuoted) {
            found.emplace_back();
        } else {
            found.back() += c;
        }
    return found;
}

/// The same by the names of the columns.
inline std::map<std::string, std::string> byName(const QString& line)
{
    std::map<std::string, std::string> named;
    const auto values = fields(line);
    const QStringList& names = MeasurementCSV::header();
    EXPECT_EQ(std::ssize(values), names.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        named[names.value(static_cast<qsizetype>(i)).toStdString()] = values[i];
    return named;
}

/// The names of the columns that hold something.
inline std::vector<std::string> filled(const QString& line)
{
    std::vector<std::string> names;
    const auto values = fields(line);
    for (std::size_t i = 0; i < values.size(); ++i)
        if (!values[i].empty())
            names.push_back(
                MeasurementCSV::header().value(static_cast<qsizetype>(i)).toStdString());
    return names;
}

} // namespace vantroque::Csv
