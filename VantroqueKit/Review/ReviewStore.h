#pragma once

#include "Base/FileStamp.h"
#include "Base/FileUrl.h"
#include "Base/Result.h"
#include "Records/FileReview.h"

#include <filesystem>
#include <optional>
#include <vector>

/// One JSON file a reviewed file, named by a fingerprint of the content, so that a review follows
/// its file through renames and moves. Stateless; every operation blocks. Any
/// thread may `peek`; the others, `load` too, may write, so only one thread calls them.
namespace vantroque::ReviewStore {

/// "Reviews" in the support folder.
std::filesystem::path directory();

/// 64 hexadecimal digits that change with any re-export in practice. Reads at most 128 KiB, since
/// hashing whole masters would take minutes: a change in the middle that keeps the size goes
/// unnoticed. Fails when the file cannot be read.
Result<QString> fingerprint(const FileUrl& url);

/// The stored review, or nothing. Only reads, so it may run beside a save.
std::optional<FileReview> peek(const QString& fingerprint);

/// The stored review, or nothing. One that cannot be understood is moved aside, to
/// "{fingerprint}.unreadable-{time}.json", so that the next save does not destroy it.
std::optional<FileReview> load(const FileUrl& url);
std::optional<FileReview> load(const QString& fingerprint);

/// The stored review with the file's present name and place, or a new one. Saves nothing. Fails
/// when the file cannot be read.
Result<FileReview> loadOrCreate(const FileUrl& url);
/// The same of a review that was loaded before, or of none; the file need not be there.
FileReview reviewOf(const FileUrl& url, const QString& fingerprint,
                    const std::optional<FileReview>& stored);

/// Which file of the disk holds the stored review, and when it was written: another one, and it
/// must be loaded again. Nothing where none is stored. Fails when that cannot be told.
Result<std::optional<FileStamp>> stamp(const QString& fingerprint);

/// Stores the review with `now` as its `updatedAt`; a crash leaves the old file or the new one.
/// What a newer version of the program has added to the stored record stays in it.
Result<void> save(const FileReview& review, const QDateTime& now = QDateTime::currentDateTimeUtc());

/// All that can be read, latest first.
std::vector<FileReview> allReviews();

/// Removes the stored review, if there is one.
Result<void> remove(const QString& fingerprint);

} // namespace vantroque::ReviewStore
