#pragma once

#include "VantroqueApp/Model/Files/FileList.h"
#include "VantroqueApp/Model/Review/ReviewBook.h"

#include <QObject>

namespace vantroque {

/// Keeps the decisions that the list shows as they are in the reviews. Main thread.
class SignOffs : public QObject {
    Q_OBJECT

public:
    /// `files` and `book` must outlive it.
    SignOffs(FileList& files, ReviewBook& book);

    void refresh(const QUuid& id);
    void refreshAll();

private:
    void take(const QString& fingerprint, const ReviewBook::Review& review);

    FileList& m_files;
    ReviewBook& m_book;
};

} // namespace vantroque
