#include "VantroqueCLI/Completion.h"

#include "VantroqueCLI/Commands.h"

#include <QByteArrayList>

namespace vantroque::Completion {

namespace {

QByteArray names()
{
    QByteArrayList names;
    for (const Command& command : commands())
        names << command.name;
    return names.join(' ');
}

/// "--output --profile ..."
QByteArray options(const Command& command)
{
    QByteArrayList words;
    for (const auto& [name, takesValue] : command.options)
        words << QByteArray::fromStdString("--" + name);
    return words.join(' ');
}

/// The installed ones, first word of the lines that stand under a group.
constexpr const char* profiles =
    "vantroque-cli profiles 2>/dev/null | sed -n 's/^  \\([^ ]*\\).*/\\1/p'";

QByteArray bash()
{
    QByteArray cases;
    for (const Command& command : commands())
        cases.append("        ")
            .append(command.name)
            .append(") words='")
            .append(options(command))
            .append("' ;;\n");
    return "# Completes the words of vantroque-cli in bash.\n"
           "_vantroque_cli() {\n"
           "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} words=\n"
           "    COMPREPLY=()\n"
           "    if [[ $COMP_CWORD -eq 1 ]]; then\n"
           "        COMPREPLY=($(compgen -W '"
           + names()
           + " --help --version' -- \"$word\"))\n"
             "        return\n"
             "    fi\n"
             "    case $before in\n"
             "        --profile) words=$("
           + profiles
           + ") ;;\n"
             "        --group) words='digital broadcast recommendation' ;;\n"
             "        --format)\n"
             "            case ${COMP_WORDS[1]} in\n"
             "                markers) words='avid premiere resolve csv' ;;\n"
             "                check) words='text json jsonl junit' ;;\n"
             "                collect) words='text json junit table' ;;\n"
             "                *) words='text json' ;;\n"
             "            esac ;;\n"
             "    esac\n"
             "    if [[ -n $words ]]; then\n"
             "        COMPREPLY=($(compgen -W \"$words\" -- \"$word\"))\n"
             "        return\n"
             "    fi\n"
             "    [[ $word == -* ]] || return\n"
             "    case ${COMP_WORDS[1]} in\n"
           + cases
           + "    esac\n"
             "    COMPREPLY=($(compgen -W \"$words\" -- \"$word\"))\n"
             "}\n"
             "complete -o bashdefault -o default -F _vantroque_cli vantroque-cli\n";
}

/// With bash's own words for it, which zsh understands.
QByteArray zsh()
{
    QByteArray script = bash();
    script.replace("# Completes the words of vantroque-cli in bash.\n",
                   "#compdef vantroque-cli\n"
                   "autoload -U +X bashcompinit && bashcompinit\n");
    return script;
}

QByteArray fish()
{
    QByteArray script = "# Completes the words of vantroque-cli in fish.\n";
    for (const Command& command : commands()) {
        script.append("complete -c vantroque-cli -n __fish_use_subcommand -a ")
            .append(command.name)
            .append('\n');
        for (const auto& [name, takesValue] : command.options) {
            script.append("complete -c vantroque-cli -n '__fish_seen_subcommand_from ")
                .append(command.name)
                .append("' -l ")
                .append(name.c_str());
            if (takesValue)
                script.append(" -r");
            if (name == "profile")
                script.append(" -f -a \"(").append(profiles).append(")\"");
            if (name == "group")
                script.append(" -f -a 'digital broadcast recommendation'");
            script.append('\n');
        }
    }
    return script;
}

} // namespace

std::optional<QByteArray> script(const std::string& shell)
{
    if (shell == "bash")
        return bash();
    if (shell == "zsh")
        return zsh();
    if (shell == "fish")
        return fish();
    return std::nullopt;
}

} // namespace vantroque::Completion
