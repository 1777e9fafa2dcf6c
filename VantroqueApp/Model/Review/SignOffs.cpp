#include "VantroqueApp/Model/Review/SignOffs.h"

namespace vantroque {

SignOffs::SignOffs(FileList& files, ReviewBook& book) : m_files(files), m_book(book)
{
    connect(&book, &ReviewBook::changed, this, &SignOffs::take);
}

void SignOffs::refresh(const QUuid& id)
{
    const FileAnalysis* entry = m_files.analysis(id);
    if (entry != nullptr && entry->fingerprint)
        m_book.read(*entry->fingerprint, [this, fingerprint = *entry->fingerprint](
                                             const auto& review) { take(fingerprint, review); });
}

void SignOffs::refreshAll()
{
    for (const FileAnalysis& entry : m_files.analyses())
        refresh(entry.id);
}

/// The same content may be in the list under several names.
void SignOffs::take(const QString& fingerprint, const ReviewBook::Review& review)
{
    const auto signOff = review ? review->signOff : std::nullopt;
    std::vector<QUuid> others;
    for (const FileAnalysis& entry : m_files.analyses())
        if (entry.fingerprint == fingerprint && entry.signOff != signOff)
            others.push_back(entry.id);
    for (const QUuid& id : others)
        m_files.change(id, [&](FileAnalysis& entry) { entry.signOff = signOff; });
}

} // namespace vantroque
