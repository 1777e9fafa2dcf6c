#include "VantroqueApp/Model/Review/ReviewBook.h"

#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

ReviewBook::~ReviewBook()
{
    waitUntilWritten();
}

/// In the background, as `save` and what is handed to the tasks. What somebody else stored takes
/// the place of what was read. While it cannot be told what is stored, what was read stays; without
/// any, it fails: a new review would be written over the stored one later.
Result<ReviewBook::Page*> ReviewBook::page(const QString& fingerprint)
{
    const auto known = m_pages.find(fingerprint);
    if (known != m_pages.end() && known->second.isUnsaved)
        return &known->second;
    const auto stamp = ReviewStore::stamp(fingerprint);
    if (known != m_pages.end() && (!stamp || *stamp == known->second.stamp))
        return &known->second;
    if (!stamp)
        return failure(stamp.error().description);
    auto stored = ReviewStore::load(fingerprint); // which moves a damaged one aside
    if (!stored && stamp->has_value()
        && ReviewStore::stamp(fingerprint).value_or(std::nullopt) == *stamp)
        return failure(u"The review of this file cannot be read."_s);
    Page& page = m_pages[fingerprint];
    page.review = stored ? std::make_shared<const FileReview>(*std::move(stored)) : nullptr;
    page.stamp = *stamp;
    return &page;
}

Result<void> ReviewBook::save(Page& page)
{
    page.isUnsaved = true;
    TRY(ReviewStore::save(*page.review, page.review->updatedAt));
    page.isUnsaved = false;
    page.stamp = ReviewStore::stamp(page.review->fingerprint).value_or(std::nullopt);
    return {};
}

void ReviewBook::read(const QString& fingerprint, std::function<void(const Review&)> then)
{
    m_tasks.run(
        [this, fingerprint] {
            const auto page = this->page(fingerprint);
            return page ? (*page)->review : nullptr;
        },
        std::move(then));
}

ReviewBook::Outcome ReviewBook::edited(const QString& fingerprint, const FileUrl& url,
                                       const Edit& edit)
{
    const auto page = this->page(fingerprint);
    if (!page)
        return {nullptr, failure(page.error().description)};
    Review& kept = (*page)->review;
    FileReview review =
        ReviewStore::reviewOf(url, fingerprint, kept ? std::optional(*kept) : std::nullopt);
    edit(review);
    review.updatedAt = QDateTime::currentDateTimeUtc();
    kept = std::make_shared<const FileReview>(std::move(review));
    auto saved = save(**page);
    return {kept, std::move(saved)};
}

void ReviewBook::change(const QString& fingerprint, const FileUrl& url, Edit edit,
                        std::function<void(const Result<void>&)> then)
{
    m_tasks.run(
        [this, fingerprint, url, edit = std::move(edit)] { return edited(fingerprint, url, edit); },
        [this, fingerprint, then = std::move(then)](const Outcome& outcome) {
            if (outcome.review)
                Q_EMIT changed(fingerprint, outcome.review);
            if (then)
                then(outcome.saved);
        });
}

void ReviewBook::waitUntilWritten()
{
    m_tasks.run(
        [this] {
            for (auto& [fingerprint, page] : m_pages)
                if (page.isUnsaved)
                    static_cast<void>(save(page));
            return true;
        },
        [](bool) {});
    m_tasks.waitUntilDone();
}

} // namespace vantroque
