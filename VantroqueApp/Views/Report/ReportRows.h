#pragma once

#include "Records/Profile.h"
#include "Records/Report.h"
#include "VantroqueApp/Views/Report/OpenRows.h"

#include <QAbstractListModel>

namespace vantroque {

/// What each platform says of a file, as rows that open and close: those that refuse it, those that
/// have something to review, those that take it; then recommendations, and what belongs to no
/// platform. In an open one stand the rows that fail, those to review, and the others folded.
class ReportRows : public QAbstractListModel {
public:
    enum class Group { platforms, recommendations, sections };
    struct Row {
        enum class Kind { heading, report, check, passed };
        Kind kind = Kind::report;
        std::size_t report = 0;
        std::size_t check = 0;
    };

    using QAbstractListModel::QAbstractListModel;

    /// `open` is what is open of the file, is kept up and must stay. Moments count frames at
    /// `frameRate`.
    void show(const FileReport& report, const std::vector<Profile>& profiles, double frameRate,
              OpenRows& open);
    void toggle(const QModelIndex& index);
    bool isOpen(const QModelIndex& index) const { return open().contains(key(index)); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    Row::Kind kind(const QModelIndex& index) const { return row(index).kind; }
    Group group(const QModelIndex& index) const { return m_reports.at(row(index).report).group; }
    const ProfileReport& report(const QModelIndex& index) const;
    /// Null for what is no check.
    const CheckResult* check(const QModelIndex& index) const;
    Verdict verdict(const QModelIndex& index) const;
    /// Where a check points at.
    std::optional<CheckMoment> moment(const QModelIndex& index) const;
    /// Its time code; empty without one.
    QString momentTime(const QModelIndex& index) const;
    /// How long ago the platform's values were compared with their source. Empty for what is no
    /// platform.
    QString freshnessLine(const QModelIndex& index) const;
    /// Of a heading, or of what is folded.
    QString label(const QModelIndex& index) const;
    /// A row as one would write it to somebody, with all that is in it.
    QString textToCopy(const QModelIndex& index) const;
    /// Names a row across reports.
    QString key(const QModelIndex& index) const { return key(row(index)); }
    /// None when no row has the key.
    QModelIndex indexOf(const QString& key) const;
    /// The row of a check, in a platform and a fold that are opened for it; else the platform's.
    QModelIndex reveal(const QString& profile, const QString& check);

private:
    struct Part {
        ProfileReport report;
        Group group = Group::platforms;
        QString freshness;
        bool operator==(const Part&) const = default;
    };
    static std::vector<Part> parts(const FileReport& report, const std::vector<Profile>& profiles);
    const Row& row(const QModelIndex& index) const;
    QString key(const Row& row) const;
    const QSet<QString>& open() const { return m_open->rows; }
    QString accessibleText(const QModelIndex& index) const;
    std::vector<Row> filled() const;
    void append(std::vector<Row>& rows, std::size_t report) const;

    std::vector<Part> m_reports;
    double m_frameRate = 0;
    std::vector<Row> m_rows;
    OpenRows m_none;
    OpenRows* m_open = &m_none;
};

} // namespace vantroque
