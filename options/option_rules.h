#pragma once

#include <QString>

#include <array>

namespace quorlin {

/// How the stored text of an option is read.
enum class OptionKind {
    GeneralSetting, ///< index 1 for "1", index 0 for anything else
    OnUnlessNo,     ///< switch: off only for "No"
    OffUnlessOk,    ///< switch: on only for "Ok"
    Index,          ///< entry of a list, the fallback when out of range
    Resolution,     ///< text, the fallback when empty; never checked to be a number
    Text            ///< text as it stands
};

/// One option: where it is stored, which control shows it, how its text is read.
struct OptionRule
{
    const char *key;      ///< key in the settings file
    const char *control;  ///< object name of its control, or the text of its list entry
    OptionKind kind;      ///< read rule
    const char *fallback; ///< stored text that an absent key stands for
    const char *standard; ///< stored text of the "Standard" set
    int limit = 0;        ///< number of entries, for Index only
};

inline constexpr int optionCount = 30;

/// All options in the order in which they are written. The "Standard" set is not what an empty
/// settings file gives: it denies the four permissions.
const std::array<OptionRule, optionCount> &optionRules();

/// "Ok" for on, "No" for off.
QString switchText(bool on);

/// The switch stored as @p stored, on unless it is exactly "No".
bool onUnlessNo(const QString &stored);

/// The switch stored as @p stored, off unless it is exactly "Ok".
bool offUnlessOk(const QString &stored);

/// The list index stored as decimal text @p stored when it is a number from 0 to @p limit - 1,
/// else @p fallback.
int storedIndex(const QString &stored, int limit, int fallback);

/// Index of the general setting: 1 ("Custom") for "1", else 0 ("Standard").
int generalSettingIndex(const QString &stored);

/// Text stored for the general setting shown as @p index: "0" for 0, else "1".
QString generalSettingText(int index);

/// @p stored, or @p fallback when it is empty.
QString resolutionText(const QString &stored, const QString &fallback);

/// What the passwords rule out.
struct PasswordEffect
{
    bool warnsMark = false;   ///< the Mark function would fail
    bool warnsPdfA = false;   ///< the PDF/A function would fail
    bool pdfAEnabled = false; ///< PDF/A may be chosen

    bool operator==(const PasswordEffect &) const = default;
};

/// A user password rules out Mark and PDF/A, an owner password alone only PDF/A.
PasswordEffect passwordEffect(const QString &userPassword, const QString &ownerPassword);

/// Whether a downsample type (an index; 0 is "Closed") has a resolution to show.
bool hasResolution(int downsampleType);

} // namespace quorlin
