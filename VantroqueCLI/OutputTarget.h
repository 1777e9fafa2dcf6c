#pragma once

#include "Base/FileDescriptor.h"
#include "Base/Result.h"
#include "VantroqueCLI/Arguments.h"

#include <QByteArray>

#include <string>
#include <vector>

namespace vantroque {

/// Where a command's document goes: the file of -o, or standard output.
class OutputTarget {
public:
    /// As -o and --overwrite say. Fails, before any work is done, when nothing can be written
    /// there, when it would replace one of the `inputs`, whatever name it has there, or, without
    /// --overwrite, a file that is called like media.
    static Result<OutputTarget> of(const Arguments& arguments,
                                   const std::vector<std::string>& inputs);
    /// The same with a file of that name when there is no -o.
    static Result<OutputTarget> of(const Arguments& arguments,
                                   const std::vector<std::string>& inputs,
                                   const std::string& otherwise);

    /// The same for a file of that name, which is to go on, whatever it is called.
    static Result<OutputTarget> toResume(const std::string& name,
                                         const std::vector<std::string>& inputs);

    /// The same for a file of that name in the folder that -o names.
    static Result<OutputTarget> inFolder(const Arguments& arguments,
                                         const std::vector<std::string>& inputs,
                                         const std::string& name);

    /// The name that was given; empty for standard output.
    const std::string& name() const { return m_name; }
    QString displayName() const;
    /// Whether a regular file is or will be there, and no pipe or device.
    bool isFile() const;

    /// A regular file is replaced whole or left as it was; a pipe or device is written through. The
    /// guards hold to the last: what lies there now counts.
    Result<void> write(const QByteArray& document) const;

    /// Opens what is written piece by piece: a regular file, made if there is none, at its end and
    /// also to be read.
    Result<FileDescriptor> openToAppend() const;

private:
    OutputTarget(std::string name, std::vector<std::string> inputs, bool overwrites)
        : m_name(std::move(name)), m_inputs(std::move(inputs)), m_overwrites(overwrites)
    {
    }

    Result<void> guard() const;
    Result<void> guardOthers() const;

    std::string m_name;
    std::vector<std::string> m_inputs;
    bool m_overwrites;
};

} // namespace vantroque
