#pragma once

#include "Base/FileUrl.h"
#include "Base/Result.h"
#include "Records/FileReview.h"
#include "Review/ReviewStore.h"
#include "VantroqueApp/Model/Background/Tasks.h"

#include <QObject>

#include <functional>
#include <map>
#include <memory>
#include <optional>

namespace vantroque {

/// The one owner of the stored reviews while the window is open. Whoever changes a review says
/// how, and the book does it to what the review is by then: nobody saves a copy that others have
/// changed meanwhile. Reviews are read and written in the background, and kept by fingerprint.
///
/// Any thread may ask; answers come on the thread that made the book. Its end waits until all is
/// written.
class ReviewBook : public QObject {
    Q_OBJECT

public:
    using Review = std::shared_ptr<const FileReview>; ///< Null where there is none.
    using Edit = std::function<void(FileReview&)>;

    ~ReviewBook() override;

    /// `then` gets the review as the changes that were asked for before leave it.
    void read(const QString& fingerprint, std::function<void(const Review&)> then);
    /// Changes the review of a file, or a new one, and saves it. `edit` is called in the
    /// background. A review that cannot be saved stays changed as long as the book is there, and
    /// is saved with its next change or at the end; one that cannot be read is not changed. `then`,
    /// which may be null, gets the reason.
    void change(const QString& fingerprint, const FileUrl& url, Edit edit,
                std::function<void(const Result<void>&)> then);

    /// Waits until all is written that can be.
    void waitUntilWritten();
    bool isIdle() const { return m_tasks.isIdle(); }

Q_SIGNALS:
    void changed(const QString& fingerprint, const vantroque::ReviewBook::Review& review);

private:
    struct Page {
        Review review;
        std::optional<FileStamp> stamp; ///< Of what it was read from or written to.
        bool isUnsaved = false;
    };

    struct Outcome {
        Review review; ///< Null where it could not be read, and so not be changed.
        Result<void> saved;
    };

    Result<Page*> page(const QString& fingerprint);
    Outcome edited(const QString& fingerprint, const FileUrl& url, const Edit& edit);
    static Result<void> save(Page& page);

    std::map<QString, Page> m_pages; ///< By fingerprint; touched by the tasks alone.
    Tasks m_tasks;
};

} // namespace vantroque
