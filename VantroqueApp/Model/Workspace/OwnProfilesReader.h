#pragma once

#include "VantroqueApp/Model/Background/Tasks.h"
#include "VantroqueApp/Model/Choices/ProfileChoice.h"

namespace vantroque {

/// Looks in the background what the operator's own profiles are by now. Main thread.
class OwnProfilesReader {
public:
    /// `choice` must outlive it.
    explicit OwnProfilesReader(ProfileChoice& choice) : m_choice(choice) {}

    void readAgain()
    {
        m_tasks.run([shipped = m_choice.shipped()] { return OwnProfiles::readBeside(shipped); },
                    [this](OwnProfiles::Found& own) { m_choice.renew(std::move(own)); });
    }
    bool isIdle() const { return m_tasks.isIdle(); }

private:
    ProfileChoice& m_choice;
    Tasks m_tasks;
};

} // namespace vantroque
