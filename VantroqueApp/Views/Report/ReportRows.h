#pragma once

#include "Records/Profile.h"
#include "Records/Report.h"

#include <QAbstractListModel>
#include <QSet>

namespace vantroque {

/// The platforms of a report with their checks, as rows that open and close.
class ReportRows : public QAbstractListModel {
public:
    /// A platform, or one of its checks.
    struct Row {
        std::size_t report = 0;
        std::optional<std::size_t> check;
    };

    using QAbstractListModel::QAbstractListModel;

    /// `fresh`: another file than before, of which nothing was opened yet.
    /// `profiles` must stay until the next call.
    void show(std::vector<ProfileReport> reports, const std::vector<Profile>& profiles, bool fresh);
    /// Where checks may point at; frames count at `frameRate`.
    void setEvents(std::vector<SignalEvent> events, double frameRate);
    void toggle(const QModelIndex& index);
    bool isOpen(const QModelIndex& index) const { return m_open.contains(key(index)); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    const ProfileReport& report(const QModelIndex& index) const;
    /// Null for the row of a platform itself.
    const CheckResult* check(const QModelIndex& index) const;
    Verdict verdict(const QModelIndex& index) const;
    /// Where a check points at that does not pass.
    std::optional<SignalEvent> moment(const QModelIndex& index) const;
    /// Its time code; empty without one.
    QString momentTime(const QModelIndex& index) const;
    /// How long ago the platform's values were compared with their source. Empty for what is no
    /// platform.
    QString freshnessLine(const QModelIndex& index) const;
    /// Names a row across reports.
    QString key(const QModelIndex& index) const;
    /// None when no row has the key.
    QModelIndex indexOf(const QString& key) const;

private:
    const Row& row(const QModelIndex& index) const;
    QString text(const QModelIndex& index) const;
    void refill();

    std::vector<ProfileReport> m_reports;
    std::vector<QString> m_freshness; ///< One a report.
    const std::vector<Profile>* m_profiles = nullptr;
    std::vector<SignalEvent> m_events;
    double m_frameRate = 0;
    std::vector<Row> m_rows;
    QSet<QString> m_open;
};

} // namespace vantroque
