#include "VantroqueApp/Model/Playback/Notebook.h"

#include "Base/PathText.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

Notebook::Notebook(const PlayedFile& file, ReviewBook& book) : m_file(file), m_book(book)
{
    connect(&book, &ReviewBook::changed, this,
            [this](const QString& fingerprint, const ReviewBook::Review& review) {
                if (fingerprint == m_fingerprint)
                    take(review);
            });
    if (file.fingerprint)
        open(*file.fingerprint);
    else
        findFingerprint();
}

void Notebook::findFingerprint()
{
    m_tasks.run([url = m_file.url] { return ReviewStore::fingerprint(url); },
                [this](const Result<QString>& fingerprint) {
                    if (fingerprint)
                        return open(*fingerprint);
                    m_early.clear();
                    Q_EMIT opened();
                });
}

Notebook::~Notebook() = default;

void Notebook::open(const QString& fingerprint)
{
    m_fingerprint = fingerprint;
    for (ReviewBook::Edit& edit : std::exchange(m_early, {}))
        persist(std::move(edit));
    m_book.read(fingerprint, [self = QPointer(this)](const ReviewBook::Review& review) {
        if (!self)
            return;
        self->take(review);
        Q_EMIT self->opened();
    });
}

void Notebook::take(const ReviewBook::Review& review)
{
    m_review = review;
    Q_EMIT reviewChanged();
}

/// Changes what the review is by then.
void Notebook::persist(ReviewBook::Edit edit)
{
    if (!m_fingerprint) {
        if (!m_tasks.isIdle()) // it will be known
            m_early.push_back(std::move(edit));
        return;
    }
    m_book.change(
        *m_fingerprint, m_file.url,
        [edit = std::move(edit), width = m_file.video.width,
         height = m_file.video.height](FileReview& review) {
            review.videoWidth = width;
            review.videoHeight = height;
            edit(review);
        },
        [self = QPointer(this)](const Result<void>& saved) {
            if (self && !saved)
                Q_EMIT self->message(u"Could not save the comment: "_s + saved.error().description);
        });
}

std::vector<ReviewComment> Notebook::comments() const
{
    return m_review ? m_review->sortedComments() : std::vector<ReviewComment>();
}

std::vector<AnnotationStroke> Notebook::strokesAt(std::int64_t frame) const
{
    constexpr std::int64_t tolerance = 1;
    return m_review ? m_review->strokesAt(frame, tolerance) : std::vector<AnnotationStroke>();
}

void Notebook::setTool(AnnotationTool tool)
{
    if (std::exchange(m_draft.tool, tool) != tool)
        Q_EMIT draftChanged();
}

void Notebook::setInk(AnnotationStroke::Ink ink)
{
    if (std::exchange(m_draft.ink, ink) != ink)
        Q_EMIT draftChanged();
}

void Notebook::setDraftText(const QString& text)
{
    if (m_draft.text == text)
        return;
    m_draft.text = text;
    Q_EMIT draftChanged();
}

void Notebook::setComposing(bool composing)
{
    if (std::exchange(m_draft.isComposing, composing) != composing)
        Q_EMIT draftChanged();
}

bool Notebook::hasDraft() const
{
    return !m_draft.strokes.empty() || !m_draft.text.trimmed().isEmpty();
}

void Notebook::setDraft(NoteDraft draft)
{
    m_draft = std::move(draft);
    Q_EMIT draftChanged();
}

void Notebook::addDraftStroke(const AnnotationStroke& stroke)
{
    m_draft.strokes.push_back(stroke);
    m_draft.undone.clear();
    m_draft.isComposing = true;
    Q_EMIT draftChanged();
}

bool Notebook::undoDrawing()
{
    if (!canUndo())
        return false;
    m_draft.undone.push_back(std::move(m_draft.strokes.back()));
    m_draft.strokes.pop_back();
    Q_EMIT draftChanged();
    return true;
}

bool Notebook::redoDrawing()
{
    if (!canRedo())
        return false;
    m_draft.strokes.push_back(std::move(m_draft.undone.back()));
    m_draft.undone.pop_back();
    Q_EMIT draftChanged();
    return true;
}

void Notebook::undoDraftStroke()
{
    if (m_draft.strokes.empty())
        return;
    m_draft.strokes.pop_back();
    Q_EMIT draftChanged();
}

void Notebook::discardDraft()
{
    setDraft({.ink = m_draft.ink});
}

std::optional<QUuid> Notebook::saveComment(std::int64_t frame, const std::optional<QString>& author)
{
    if (!isOpen())
        return std::nullopt;
    if (!hasDraft()) {
        discardDraft();
        return std::nullopt;
    }
    const ReviewComment comment{.id = QUuid::createUuid(),
                                .frame = frame,
                                .frameRate = m_file.workingRate().perSecond(),
                                .text = m_draft.text.trimmed(),
                                .author = author,
                                .createdAt = QDateTime::currentDateTimeUtc(),
                                .strokes = m_draft.strokes};
    persist([comment](FileReview& review) { review.comments.push_back(comment); });
    discardDraft();
    return comment.id;
}

void Notebook::removeComment(const QUuid& id)
{
    const auto all = comments();
    const auto found = std::ranges::find(all, id, &ReviewComment::id);
    if (found == all.end())
        return;
    persist([id](FileReview& review) {
        std::erase_if(review.comments, [&](const ReviewComment& each) { return each.id == id; });
    });
    m_removed.push_back(*found);
    Q_EMIT removedChanged();
}

void Notebook::setRemoved(std::vector<ReviewComment> comments)
{
    if (m_removed.empty() && comments.empty())
        return;
    m_removed = std::move(comments);
    Q_EMIT removedChanged();
}

std::optional<QUuid> Notebook::bringBackComment()
{
    if (m_removed.empty())
        return std::nullopt;
    const ReviewComment comment = std::move(m_removed.back());
    m_removed.pop_back();
    persist([comment](FileReview& review) {
        if (std::ranges::count(review.comments, comment.id, &ReviewComment::id) > 0)
            return;
        // Of several on one frame the older ones stand first.
        const auto later = std::ranges::find_if(review.comments, [&](const ReviewComment& each) {
            return each.createdAt > comment.createdAt;
        });
        review.comments.insert(later, comment);
    });
    Q_EMIT removedChanged();
    return comment.id;
}

void Notebook::setSignOff(std::optional<ReviewSignOff::Decision> decision, const FileReport* report)
{
    std::optional<ReviewSignOff> signOff;
    if (decision) {
        signOff =
            ReviewSignOff{.decision = *decision, .decidedAt = QDateTime::currentDateTimeUtc()};
        if (report != nullptr) {
            signOff->qcVerdictWhenSigned = report->summaryVerdict();
            signOff->qcSummaryWhenSigned = report->summaryHeadline();
            for (const ProfileReport& failing : report->failingProfiles())
                signOff->failingWhenSigned.push_back(failing.profileName);
        }
    }
    persist([signOff](FileReview& review) { review.signOff = signOff; });
}

void Notebook::setCaptionsPath(const std::optional<FileUrl>& sidecar)
{
    const auto path = sidecar ? std::optional(PathText::of(*sidecar)) : std::nullopt;
    persist([path](FileReview& review) { review.captionsPath = path; });
}

} // namespace vantroque
