#pragma once

#include "Base/Cancellation.h"
#include "Base/ScopedVariable.h"
#include "Check/Builders.h"
#include "Support/Clips.h"
#include "Support/FakeSpellChecker.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"
#include "VantroqueApp/Model/AppModel.h"

#include <QCoreApplication>
#include <QTest>

#include <atomic>

namespace vantroque {

using namespace Qt::StringLiterals;

/// Scores nothing.
inline Profile plainProfile(const QString& id)
{
    Profile profile = bareProfile();
    profile.id = id;
    profile.name = id;
    return profile;
}

/// Needs a decode.
inline Profile loud()
{
    Profile profile = plainProfile(u"loud"_s);
    profile.loudness = LoudnessRule();
    return profile;
}

/// Answers where to save as the test says.
class FakeDesktop : public Desktop {
public:
    std::optional<FileUrl> chooseSaveFile(const SaveQuestion& question) override
    {
        proposed.push_back(question.name);
        questions.push_back(question);
        return answer;
    }
    std::optional<FileUrl> chooseFolder(const QString& title, const FileUrl& beside) override
    {
        questions.push_back({title, beside, {}, {}});
        return answer;
    }
    bool mayReplace(const QStringList& names, const FileUrl& folder) override
    {
        replaced << names;
        if (meanwhile)
            meanwhile(folder);
        return letsReplace;
    }
    void showInFolder(const FileUrl& file) override { shown.push_back(file); }
    std::optional<FileUrl> chooseOpenFile(const QString& message,
                                          const QStringList& extensions) override
    {
        proposed.push_back(message + u' ' + extensions.join(u' '));
        return answer;
    }

    std::optional<FileUrl> answer;
    bool letsReplace = false;
    std::function<void(const FileUrl&)> meanwhile; ///< While the operator thinks about that.
    QStringList replaced;                          ///< What was asked for.
    std::vector<QString> proposed;
    std::vector<SaveQuestion> questions;
    std::vector<FileUrl> shown;
};

/// Analyses that wait until the test lets them go on. What they find is nothing but the name.
class HeldEngine {
public:
    AnalysisEngine engine()
    {
        return {.analyze = [this](const FileUrl& url, const std::vector<Profile>& profiles,
                                  AnalysisProgress& progress) -> Result<Analyzer::Analysis> {
                    wantedPreview = progress.wantsPreview();
                    progress.set(AnalysisProgress::Stage::probing);
                    pass(url.fileName());
                    wasCalledOff = Cancellation::isRequested();
                    if (m_fails)
                        return failure(u"the analysis failed"_s);
                    return Analyzer::Analysis{media(url), Analyzer::report(media(url), profiles)};
                },
                .rescore = [this](MediaInfo& media,
                                  const std::vector<Profile>& profiles) -> Result<FileReport> {
                    pass(u"rescore "_s + media.url.fileName());
                    wasCalledOff = Cancellation::isRequested();
                    if (m_fails)
                        return failure(u"the rescore failed"_s);
                    media.signal = SignalInfo();
                    media.signal->decodeHealth.emplace();
                    return Analyzer::report(media, profiles);
                }};
    }

    static MediaInfo media(const FileUrl& url)
    {
        MediaInfo media;
        media.url = url;
        media.video = hdVideo();
        media.durationSeconds = 30;
        media.analysisVersion = currentAnalysisVersion;
        return media;
    }

    /// Lets so many more calls end.
    void release(int count = 1)
    {
        const std::scoped_lock lock(m_mutex);
        m_free += count;
        m_wake.notify_all();
    }
    /// Holds nothing back until `hold`.
    void letGo() { release(1'000'000); }
    /// Lets that one call end, whatever else is held.
    void letGo(const QString& name)
    {
        const std::scoped_lock lock(m_mutex);
        m_named.insert(name);
        m_wake.notify_all();
    }
    void hold()
    {
        const std::scoped_lock lock(m_mutex);
        m_free = 0;
    }
    void failFromNowOn() { m_fails = true; }
    /// What was begun, in order.
    std::vector<QString> begun()
    {
        const std::scoped_lock lock(m_mutex);
        return m_begun;
    }

    std::atomic<bool> wantedPreview = false;
    std::atomic<bool> wasCalledOff = false; ///< What ended last.

private:
    void pass(const QString& name)
    {
        std::unique_lock lock(m_mutex);
        m_begun.push_back(name);
        m_wake.wait(lock, [&] { return m_free > 0 || m_named.contains(name); });
        if (m_named.erase(name) == 0)
            --m_free;
    }

    std::atomic<bool> m_fails = false;
    std::mutex m_mutex; ///< Guards what follows.
    std::condition_variable m_wake;
    int m_free = 0;
    std::set<QString> m_named;
    std::vector<QString> m_begun;
};

/// A model with a user's folders of its own.
class ModelTest : public testing::Test {
protected:
    ~ModelTest() override { end(); }

    /// A new start of the program, which may still read the stored list.
    AppModel& begin(AnalysisEngine engine, Result<std::vector<Profile>> profiles)
    {
        end();
        m_defaults = std::make_unique<UserDefaults>(
            QString::fromStdString((m_folder / "settings").native()));
        m_model = std::make_unique<AppModel>(*m_defaults, m_desktop, std::move(engine), m_speller,
                                             std::move(profiles), m_makeEngine);
        static_cast<void>(m_model->queue().toolMissing()); // looks at variables that tests set
        return *m_model;
    }
    /// With the stored list.
    AppModel& start(AnalysisEngine engine, Result<std::vector<Profile>> profiles)
    {
        begin(std::move(engine), std::move(profiles)).workspace().finishRestoring();
        return *m_model;
    }
    AppModel& start(std::vector<Profile> profiles = {})
    {
        return start(AnalysisEngine::real(nullptr), std::move(profiles));
    }
    AppModel& startHeld(std::vector<Profile> profiles = {})
    {
        return start(m_held.engine(), std::move(profiles));
    }
    /// The program ends, as the desktop tells it to.
    void quit()
    {
        m_model->saveWorkspaceNow();
        end();
    }
    /// The program is gone without a word.
    void end()
    {
        m_held.letGo();
        m_model.reset();
        m_defaults.reset();
        m_held.hold();
    }

    AppModel& model() { return *m_model; }

    template<typename Condition>
    static bool soon(Condition condition)
    {
        constexpr int milliseconds = 60'000;
        return QTest::qWaitFor(condition, milliseconds);
    }
    /// Until nothing is done in the background and all reports are up to date.
    bool soonIdle()
    {
        return soon([this] {
            return m_model->isIdle()
                   && std::ranges::all_of(m_model->files().analyses(),
                                          [this](const FileAnalysis& entry) {
                                              return !entry.is<FileAnalysis::Queued>()
                                                     && (!entry.is<FileAnalysis::Done>()
                                                         || m_model->rescorer().isCurrent(entry));
                                          });
        });
    }

    /// A file of the test's own with the content of a clip.
    FileUrl file(const std::string& name, const std::filesystem::path& clip = Clips::plain())
    {
        return FileUrl::fromPath(m_folder.write(name, contents(clip)));
    }
    FileUrl anyFile(const std::string& name)
    {
        return FileUrl::fromPath(m_folder.write(name, QByteArray::fromStdString(name)));
    }

    QStringList names()
    {
        QStringList names;
        for (const FileAnalysis& entry : model().files().analyses())
            names << entry.url.fileName();
        return names;
    }
    /// "queued", "running", ... of each entry.
    QStringList states()
    {
        constexpr std::array words{"done", "failed", "queued", "running", "missing"};
        QStringList states;
        for (const FileAnalysis& entry : model().files().analyses())
            states << QString::fromLatin1(words.at(entry.status.index()));
        return states;
    }
    const FileAnalysis& entry(std::size_t index) { return model().files().analyses().at(index); }
    QString selectedName()
    {
        const auto id = model().files().selectedAnalysisID();
        return id ? model().files().analysis(*id)->url.fileName() : QString();
    }
    static QStringList profileIDs(const FileAnalysis& entry)
    {
        QStringList ids;
        for (const ProfileReport& report : entry.report()->profiles)
            ids << report.profileID;
        return ids;
    }

    const TestFolder m_folder;
    const ScopedVariable m_dataHome{"XDG_DATA_HOME", m_folder / "data"};
    FakeDesktop m_desktop;
    FakeSpellChecker m_speller;
    HeldEngine m_held;
    PlaybackEngineMaker m_makeEngine; ///< For players; null for stills.

private:
    int m_argumentCount = 1;
    std::string m_program = "ModelTests";
    std::array<char*, 2> m_arguments{m_program.data(), nullptr};
    /// Unless the test program has made one, for windows.
    const std::unique_ptr<QCoreApplication> m_application =
        QCoreApplication::instance() == nullptr
            ? std::make_unique<QCoreApplication>(m_argumentCount, m_arguments.data())
            : nullptr;
    std::unique_ptr<UserDefaults> m_defaults;

protected:
    std::unique_ptr<AppModel> m_model;
};

} // namespace vantroque
