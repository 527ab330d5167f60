#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

// The tool's commands. Each command lives in a file of its own and registers itself with a
// static ToolCommand::Registration, so that adding one never touches main.cpp:
//
//     const ToolCommand::Registration registration{
//         {QStringLiteral("position read"), usage, summary, help, &runPositionRead}};
//
// The name may have several words ("position read"); the arguments after them reach run(),
// which also gets its own Command for error messages.
namespace ToolCommand {

// What a command answers: 0 done, UsageError for a wrong argument (after one line on stderr),
// Failure when the work itself failed.
enum ExitCode { Success = 0, Failure = 1, UsageError = 2 };

struct Command
{
    QString name;    // "workspace", "position read"
    QString usage;   // the arguments after the name, e.g. "FILE"
    QString summary; // one line for the overview
    QString help;    // what --help prints after the usage line
    std::function<int(const Command &self, const QStringList &args)> run;
};

struct Registration
{
    explicit Registration(Command command);
};

const std::vector<Command> &commands();

// Output helpers shared by the commands.
void out(const QString &text);                                  // text + "\n" on stdout
int usageError(const Command &command, const QString &message); // one line on stderr
int failure(const QString &message);                            // one line on stderr
bool wantsHelp(const QStringList &args);                        // "--help" or "-h" anywhere
void printHelp(const Command &command);

} // namespace ToolCommand
