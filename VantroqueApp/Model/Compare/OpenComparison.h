#pragma once

#include "Base/FileUrl.h"
#include "VantroqueApp/Model/Compare/CompareController.h"
#include "VantroqueApp/Model/Files/Comparison.h"
#include "VantroqueApp/Model/Files/FileIds.h"

#include <QObject>

#include <memory>

namespace vantroque {

/// The versions that are compared while `Comparison` says that any are: the selected files where
/// those are several, else all, in the order of the list. A file that is analysed meanwhile joins
/// them. Main thread.
class OpenComparison : public QObject {
    Q_OBJECT

public:
    /// On one screen more cannot be told apart.
    static constexpr std::size_t mostFiles = 12;

    /// All of it must outlive it.
    OpenComparison(const FileList& files, Comparison& comparison,
                   const PlayerSurroundings& surroundings);
    ~OpenComparison() override;

    /// Null while nothing is compared.
    CompareController* controller() const { return m_controller.get(); }
    /// How many files there was no room for.
    std::size_t leftOut() const { return m_leftOut; }

Q_SIGNALS:
    void aboutToGo(); ///< Whoever shows it lets go of it.
    void changed();   ///< It was opened or has gone, or a file had no room.

private:
    void sync();
    void open();
    void join(const QUuid& id);
    std::vector<const FileAnalysis*> chosen() const;

    const FileList& m_files;
    Comparison& m_comparison;
    const PlayerSurroundings m_surroundings;
    std::unique_ptr<CompareController> m_controller;
    FileIds m_known; ///< Entries that could be compared when it was opened, or joined.
    std::size_t m_leftOut = 0;
};

} // namespace vantroque
