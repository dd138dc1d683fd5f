#pragma once

#include <QFlags>
#include <QString>
#include <QStringList>

#include <span>

namespace quorlin::batch {

/// What the command line asks for.
enum class Mode {
    Split = 0x1,
    ListRules = 0x2,
    ListItems = 0x4,
    SaveRule = 0x8,
    RemoveRule = 0x10,
    RenameRule = 0x20,
    ExportRules = 0x40,
    ImportRules = 0x80,
    Help = 0x100,
    Version = 0x200
};
Q_DECLARE_FLAGS(Modes, Mode)
Q_DECLARE_OPERATORS_FOR_FLAGS(Modes)

/// An option of the program as its users see it.
struct Option
{
    const char *name;  ///< without the dashes
    const char *value; ///< what stands for its value in the help; null for a switch
    int modes;         ///< Modes that it goes with
    const char *help;  ///< lines of the help
};

/// Options that belong together in the help.
struct OptionGroup
{
    const char *heading;
    std::span<const Option> options;
};

/// All options, in the order of the help.
std::span<const OptionGroup> optionGroups();

/// How the mode is asked for: "--list-items", or "a split".
QString modeText(Mode mode);

/// The text of "--help".
QString helpText();

} // namespace quorlin::batch
