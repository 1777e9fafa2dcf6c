#pragma once

#include "VantroqueApp/Model/Files/FileAnalysis.h"
#include "VantroqueApp/Model/Files/FileRemoval.h"
#include "VantroqueApp/Model/Files/SkippedFile.h"

#include <QHash>
#include <QObject>

#include <functional>
#include <optional>
#include <vector>

namespace vantroque {

/// The files, in order of adding, and which of them are selected. What is done with a file changes
/// its entry here, by id, since the list may change meanwhile. Main thread. Pointers and
/// references that it gives hold until it changes.
///
/// List and selection are changed first and told afterwards, since who is told may change them
/// again.
class FileList : public QObject {
    Q_OBJECT

public:
    using Change = std::function<void(FileAnalysis&)>;

    const std::vector<FileAnalysis>& analyses() const { return m_analyses; }
    /// The entry, or null.
    const FileAnalysis* analysis(const QUuid& id) const;
    /// Changes an entry, if it is still there, and tells of it.
    void change(const QUuid& id, const Change& change);
    /// Has it measured from scratch.
    void queueAgain(const QUuid& id);
    /// The same of the selected ones, but for those that are on their way.
    void queueSelectedAgain();

    /// Takes dropped and opened files. The first that holds captions is for the open player; what
    /// else is no video file is skipped, and returned; what is on its way stays; what was done
    /// before starts over at the end of the list.
    std::vector<SkippedFile> add(const std::vector<FileUrl>& urls);
    /// Takes entries as they were when the program ended, with the selected one.
    void restore(std::vector<FileAnalysis> entries, const std::optional<QUuid>& selected);
    void remove(const QUuid& id) { remove(FileIds{id}); }
    void remove(const FileIds& ids);
    void clearAll();
    /// What was taken out last and can come back; nothing after that.
    const std::optional<FileRemoval>& lastRemoval() const { return m_removal; }
    void bringBack();

    const FileSelection& selection() const { return m_selection; }
    /// The one that leads.
    const std::optional<QUuid>& selectedAnalysisID() const { return m_selection.lead; }
    bool isSeveralSelected() const { return m_selection.ids.size() > 1; }
    void select(const std::optional<QUuid>& id) { select(FileSelection::of(id)); }
    void select(FileSelection selection);
    /// All that are selected, in the order of the list.
    std::vector<const FileAnalysis*> allSelected() const;
    /// The one selected entry, or null when there is none or several are; its report and its
    /// measurements, or null.
    const FileAnalysis* selected() const;
    const FileReport* selectedReport() const;
    const MediaInfo* selectedMedia() const;

    /// The entries in sight, which come first in what is done for many.
    void setVisible(FileIds ids) { m_visible = std::move(ids); }
    /// The selected one, then those in sight, then the others.
    std::vector<QUuid> inOrderOfUrgency() const;

Q_SIGNALS:
    void aboutToAddOrClear(); ///< Whoever still has entries for the list restores them now.
    void listChanged();       ///< Entries came, went or moved.
    void entryChanged(const QUuid& id);
    void selectionChanged();
    // When these are told, the above were.
    void removed();        ///< Entries were taken out.
    void broughtBack();    ///< Those that were taken out last are in the list again.
    void queued();         ///< Entries wait to be analysed.
    void contentChanged(); ///< The operator changed entries or selection.
    void captionsAdded(const vantroque::FileUrl& captions); ///< For the player, if one is open.

private:
    std::vector<SkippedFile> append(const std::vector<FileUrl>& urls);
    void takeOut(const FileIds& ids);
    void reindex();
    void keepLead();
    void tellSelection(const FileSelection& before);

    std::vector<FileAnalysis> m_analyses;
    QHash<QUuid, std::size_t> m_places; ///< In it.
    FileSelection m_selection;
    std::optional<FileRemoval> m_removal;
    FileIds m_visible;
};

} // namespace vantroque
