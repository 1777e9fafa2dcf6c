#pragma once

#include "Export/Marker.h"

#include <QUuid>

#include <vector>

/// The formats that markers are written in, and what their texts have in common.
namespace vantroque::MarkerExport {

QString avidXML(const std::vector<Marker>& markers);
QString premiereXML(const std::vector<Marker>& markers, const MarkerContext& context,
                    const QUuid& id);
QString resolveEDL(const std::vector<Marker>& markers, const MarkerContext& context);
/// With a byte order mark, by which spreadsheets tell UTF-8.
QString csv(const std::vector<Marker>& markers, const MarkerContext& context);

/// What a marker's colour says, in the way of each editor.
enum class Color { green, red, yellow, cyan };
Color color(const Marker& marker);

/// On one line, with what has a meaning in XML escaped.
QString xml(const QString& text);
/// In local time and English, as in "Mar 01 26 01:05PM".
QString dateText(const QDateTime& date);

} // namespace vantroque::MarkerExport
