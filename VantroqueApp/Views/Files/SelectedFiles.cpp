#include "VantroqueApp/Views/Files/SelectedFiles.h"

#include "Base/Numbers.h"
#include "Base/Text.h"
#include "Check/CheckTexts.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

const std::array<QString, 8>& headings()
{
    static const std::array<QString, 8> headings{u"File"_s, u"Length"_s,   u"Picture"_s,
                                                 u"Rate"_s, u"Loudness"_s, u"True peak"_s,
                                                 u"Size"_s, u"Fails"_s};
    return headings;
}

QString number(const std::optional<double>& value, const QString& unit)
{
    return value ? Numbers::fixed(*value, 1) + u' ' + unit : QString();
}

QString outcome(const FileAnalysis& file)
{
    switch (standingOf(file)) {
    case FileStanding::notAnalyzed: return u"Could not analyze"_s;
    case FileStanding::running: return u"Analyzing"_s;
    case FileStanding::waiting: return u"Waiting"_s;
    case FileStanding::missing: return u"File moved or deleted"_s;
    default: break;
    }
    const auto& platforms = file.report()->profiles;
    const auto gates = std::ranges::count_if(
        platforms, [](const ProfileReport& profile) { return !profile.isAdvisory(); });
    const auto failing = std::ranges::count_if(platforms, [](const ProfileReport& profile) {
        return !profile.isAdvisory() && profile.verdict() == Verdict::fail;
    });
    return u"%1 of %2"_s.arg(failing).arg(gates);
}

QString measured(const FileAnalysis& file, int column)
{
    const FileReport* report = file.report();
    if (report == nullptr)
        return {};
    const auto& video = report->video;
    const auto& figures = report->measurements;
    switch (column) {
    case SelectedFiles::length:
        return video ? Numbers::fixed(video->durationSeconds, 1) + u's' : QString();
    case SelectedFiles::picture:
        return video ? u"%1x%2"_s.arg(video->width).arg(video->height) : QString();
    case SelectedFiles::rate:
        return video ? Checker::trimRate(video->frameRate) + u" fps"_s : QString();
    case SelectedFiles::loudness:
        return figures ? number(figures->integratedLKFS, u"LKFS"_s) : QString();
    case SelectedFiles::truePeak:
        return figures ? number(figures->truePeakDb, u"dBTP"_s) : QString();
    case SelectedFiles::size:
        return file.media && file.media->fileSizeBytes > 0
                   ? Text::byteCount(file.media->fileSizeBytes)
                   : QString();
    default: return {};
    }
}

QString textOf(const FileAnalysis& file, int column)
{
    return column == SelectedFiles::name    ? file.url.fileName()
           : column == SelectedFiles::fails ? outcome(file)
                                            : measured(file, column);
}

} // namespace

void SelectedFiles::show(std::vector<FileAnalysis> files)
{
    beginResetModel();
    m_files = std::move(files);
    endResetModel();
}

int SelectedFiles::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_files.size());
}

int SelectedFiles::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(headings().size());
}

QVariant SelectedFiles::data(const QModelIndex& index, int role) const
{
    const FileAnalysis& file = m_files.at(static_cast<std::size_t>(index.row()));
    switch (role) {
    case Qt::DisplayRole: return textOf(file, index.column());
    case Qt::ToolTipRole: return index.column() == name ? file.url.displayPath() : QString();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::AlignVCenter
                                   | (index.column() == name ? Qt::AlignLeft : Qt::AlignRight));
    case standingRole: return static_cast<int>(standingOf(file));
    default: return {};
    }
}

QVariant SelectedFiles::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical)
        return {};
    if (role == Qt::DisplayRole)
        return headings().at(static_cast<std::size_t>(section));
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignVCenter
                                   | (section == name ? Qt::AlignLeft : Qt::AlignRight));
    return {};
}

QString SelectedFiles::text() const
{
    QStringList lines{QStringList(headings().begin(), headings().end()).join(u'\t')};
    for (const FileAnalysis& file : m_files) {
        QStringList cells;
        for (int column = 0; column < columnCount(); ++column)
            cells << Text::printable(textOf(file, column));
        lines << cells.join(u'\t');
    }
    return lines.join(u'\n') + u'\n';
}

} // namespace vantroque
