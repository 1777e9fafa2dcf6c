#pragma once

#include "Base/ScopedVariable.h"
#include "Support/TestFolder.h"

#include <QList>

#include <string>
#include <vector>

namespace vantroque {

/// A folder of stand-ins for ffprobe and ffmpeg, which the code under test finds before the real
/// ones until the scope ends. A tool without a stand-in is the real one.
class FakeTools {
public:
    FakeTools()
        : m_variable("VANTROQUE_FFMPEG_DIR", m_folder.path()), m_cage("VANTROQUE_CAGE", "off")
    {
    }

    const std::filesystem::path& folder() const { return m_folder.path(); }
    std::filesystem::path ffprobe() const { return m_folder / "ffprobe"; }

    /// A shell script in place of the tool.
    void put(const std::string& tool, const QByteArray& script) const
    {
        m_folder.writeScript(tool, "#!/bin/sh\n" + script + '\n');
    }

    /// A tool that prints this text.
    void print(const std::string& tool, const QByteArray& text) const
    {
        put(tool, "cat <<'END'\n" + text + "\nEND");
    }

    /// The real tool, that notes each of its calls.
    void record(const std::string& tool) const
    {
        const QByteArray log = QByteArray::fromStdString((m_folder / (tool + ".log")).native());
        put(tool, "printf '%s\\n' \"$@\" '' >> '" + log + "'\nexec "
                      + QByteArray::fromStdString(tool) + " \"$@\"");
    }

    /// The recorded calls in order, each the list of its arguments.
    std::vector<std::vector<std::string>> calls(const std::string& tool) const
    {
        std::vector<std::vector<std::string>> found;
        std::vector<std::string> call;
        for (const QByteArray& line : contents(m_folder / (tool + ".log")).split('\n')) {
            if (!line.isEmpty()) {
                call.push_back(line.toStdString());
            } else if (!call.empty()) {
                found.push_back(call);
                call.clear();
            }
        }
        return found;
    }

private:
    TestFolder m_folder;
    ScopedVariable m_variable;
    ScopedVariable m_cage; ///< What stands in for a tool writes where it likes.
};

} // namespace vantroque
