#pragma once

#include "Records/FileReview.h"
#include "Review/WorkspaceStore.h"

// Records that tell whether they are whole.

namespace vantroque::StoreWriter {

inline const QString fingerprint(64, u'b');

inline FileReview review(int length)
{
    ReviewComment comment;
    comment.text = QString(300, u'x');
    comment.createdAt = QDateTime::fromSecsSinceEpoch(length, Qt::UTC);
    FileReview review;
    review.fingerprint = fingerprint;
    review.fileSizeBytes = length;
    review.comments.assign(static_cast<std::size_t>(length), comment);
    return review;
}

inline bool isWhole(const std::optional<FileReview>& stored)
{
    if (!stored)
        return false;
    FileReview expected = review(static_cast<int>(stored->fileSizeBytes));
    expected.updatedAt = stored->updatedAt;
    return *stored == expected;
}

inline Workspace workspace(int length)
{
    WorkspaceFile file;
    file.path = u'/' + QString(300, u'x');
    return {std::vector<WorkspaceFile>(static_cast<std::size_t>(length), file),
            {},
            QDateTime::fromSecsSinceEpoch(length, Qt::UTC)};
}

inline bool isWhole(const std::optional<Workspace>& stored)
{
    return stored && *stored == workspace(static_cast<int>(stored->savedAt.toSecsSinceEpoch()));
}

} // namespace vantroque::StoreWriter
