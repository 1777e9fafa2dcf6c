#pragma once

#include <QString>

#include <vector>

namespace vantroque {

/// Why a file could not be analysed, laid out for the operator: first what it means, then what to
/// do, and last what the tool said.
struct Trouble {
    struct Step {
        QString todo;
        QString why; ///< Or what to look out for.
        bool operator==(const Step&) const = default;
    };

    QString sentence;        ///< One line, never empty.
    std::vector<Step> steps; ///< In order, at most 3; none when the cause is not a known one.
    QString tool;            ///< "ffprobe, status 1"; empty when no tool ended with a status.
    QString words;           ///< The tool's, without addresses; empty when it said nothing more.
    bool operator==(const Trouble&) const = default;

    /// Of the reason that an analysis failed with: its `Error::description`.
    static Trouble of(const QString& reason);

    /// Whether it failed because somebody else ended a tool, which says nothing about the file.
    static bool isOfOthers(const QString& reason);

    /// Whether another time may do: somebody ended a tool, tools are not there, or a disk or what
    /// this machine allows is used up. It says nothing about the file either.
    static bool mayPass(const QString& reason);
};

} // namespace vantroque
