#pragma once

#include "VantroqueApp/Model/Background/SeparateTasks.h"
#include "VantroqueApp/Views/Files/DroppedFiles.h"

#include <functional>

namespace vantroque {

/// Looks in the background at what was dropped, chosen or given at the start: a folder may be
/// large, and a disk of the network may never answer. Its end waits for all of it.
class FileLooker {
public:
    using Paths = std::vector<std::filesystem::path>;
    using Look = std::function<DroppedFiles::Found(const Paths&)>;

    explicit FileLooker(Look look = DroppedFiles::look) : m_look(std::move(look)) {}

    void look(Paths paths, std::function<void(const DroppedFiles::Found&)> then)
    {
        m_looks.run([look = m_look, paths = std::move(paths)] { return look(paths); },
                    std::move(then));
    }
    bool isIdle() const { return m_looks.isIdle(); }

private:
    const Look m_look;
    SeparateTasks m_looks;
};

} // namespace vantroque
