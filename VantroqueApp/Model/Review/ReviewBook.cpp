#include "VantroqueApp/Model/Review/ReviewBook.h"

#include <utility>

namespace vantroque {

ReviewBook::~ReviewBook()
{
    waitUntilWritten();
}

/// In the background, as all below. What somebody else stored takes the place of what was read.
ReviewBook::Page& ReviewBook::page(const QString& fingerprint)
{
    const auto [at, isNew] = m_pages.try_emplace(fingerprint);
    Page& page = at->second;
    if (page.isUnsaved)
        return page;
    const auto stamp = ReviewStore::stamp(fingerprint);
    if (!isNew && stamp == page.stamp)
        return page;
    auto stored = ReviewStore::load(fingerprint);
    page.review = stored ? std::make_shared<const FileReview>(*std::move(stored)) : nullptr;
    page.stamp = stamp;
    return page;
}

Result<void> ReviewBook::save(Page& page)
{
    page.isUnsaved = true;
    const auto saved = ReviewStore::save(*page.review, page.review->updatedAt);
    if (saved) {
        page.isUnsaved = false;
        page.stamp = ReviewStore::stamp(page.review->fingerprint);
    }
    return saved;
}

void ReviewBook::read(const QString& fingerprint, std::function<void(const Review&)> then)
{
    m_tasks.run([this, fingerprint] { return page(fingerprint).review; }, std::move(then));
}

void ReviewBook::change(const QString& fingerprint, const FileUrl& url, Edit edit,
                        std::function<void(const Result<void>&)> then)
{
    m_tasks.run(
        [this, fingerprint, url, edit = std::move(edit)] {
            Page& page = this->page(fingerprint);
            FileReview review = ReviewStore::reviewOf(
                url, fingerprint, page.review ? std::optional(*page.review) : std::nullopt);
            edit(review);
            review.updatedAt = QDateTime::currentDateTimeUtc();
            page.review = std::make_shared<const FileReview>(std::move(review));
            auto saved = save(page);
            return std::pair(page.review, std::move(saved));
        },
        [this, fingerprint, then = std::move(then)](const auto& outcome) {
            Q_EMIT changed(fingerprint, outcome.first);
            if (then)
                then(outcome.second);
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
