#include "VantroqueApp/Model/AppModel.h"

#include <malloc.h>

namespace vantroque {

namespace {

/// A new choice of platforms lets go of some hundred thousand small blocks. Left to itself, the C
/// library keeps those as they are until some larger block is freed, and then joins all of them,
/// which takes it the time of three frames.
void joinFreedBlocksAtOnce()
{
    ::mallopt(M_MXFAST, 0);
}

} // namespace

AppModel::AppModel(UserDefaults& defaults, Desktop& desktop, const AnalysisEngine& engine,
                   SpellChecker& checker, Result<std::vector<Profile>> profiles,
                   PlaybackEngineMaker makeEngine)
    : m_defaults(defaults),
      m_appearance(defaults),
      m_noteAuthor(defaults),
      m_doneNotice(defaults),
      m_profiles(defaults, std::move(profiles)),
      m_profileSets(defaults, m_profiles),
      m_queue(m_files, m_profiles, engine),
      m_rescorer(m_files, m_profiles, engine),
      m_exports(m_files, m_profiles, m_reviews, desktop, checker),
      m_surroundings({.defaults = defaults,
                      .reviews = m_reviews,
                      .desktop = desktop,
                      .clock = m_clock,
                      .speller = checker,
                      .makeEngine = std::move(makeEngine)}),
      m_openPlayer(m_files, m_surroundings),
      m_openComparison(m_files, m_comparison, m_surroundings)
{
    joinFreedBlocksAtOnce();
    connectSubjects();
    m_workspace.startRestoring();
}

void AppModel::connectSubjects()
{
    const auto connect = [](auto... arguments) { QObject::connect(arguments...); };
    // The choice of profiles may have changed while the file was analysed.
    connect(&m_queue, &AnalysisQueue::finished, &m_rescorer, &Rescorer::rescore);
    connect(&m_queue, &AnalysisQueue::finished, &m_signOffs, &SignOffs::refresh);
    connect(&m_queue, &AnalysisQueue::finished, &m_workspace, &WorkspaceKeeper::schedule);
    connect(&m_rescorer, &Rescorer::measuredMore, &m_workspace, &WorkspaceKeeper::schedule);
    connect(&m_verifier, &FileVerifier::verified, &m_workspace, &WorkspaceKeeper::schedule);
    // The choice of profiles and the reviews may have changed while they were gone.
    // A turn of its own each, since the list may be long.
    connect(&m_files, &FileList::broughtBack, &m_rescorer, &Rescorer::rescoreAll,
            Qt::QueuedConnection);
    connect(&m_files, &FileList::broughtBack, &m_signOffs, &SignOffs::refreshAll,
            Qt::QueuedConnection);
    connect(&m_files, &FileList::broughtBack, &m_files, &FileList::queued, Qt::QueuedConnection);
    // Of both only one is seen, and heard.
    connect(&m_comparison, &Comparison::changed, &m_openPlayer, &OpenPlayer::rest);
    connect(&m_workspace, &WorkspaceKeeper::restored, &m_signOffs, &SignOffs::refreshAll);
    connect(&m_workspace, &WorkspaceKeeper::restored, &m_rescorer, &Rescorer::rescoreAll);
    connect(&m_workspace, &WorkspaceKeeper::restored, &m_queue, &AnalysisQueue::pump);
    connect(&m_workspace, &WorkspaceKeeper::restored, &m_verifier,
            &FileVerifier::verifyRestoredFiles);
}

void AppModel::saveWorkspaceNow()
{
    m_workspace.saveNow();
    m_reviews.waitUntilWritten();
    m_defaults.waitUntilWritten();
}

bool AppModel::isIdle() const
{
    return !m_workspace.isRestoring() && !m_queue.isWorking() && m_rescorer.isIdle()
           && m_verifier.isIdle() && m_ownProfiles.isIdle() && m_reviews.isIdle()
           && m_exports.isIdle();
}

} // namespace vantroque
