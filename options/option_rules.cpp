#include "options/option_rules.h"

namespace quorlin {

const std::array<OptionRule, optionCount> &optionRules()
{
    using enum OptionKind;
    static constexpr std::array<OptionRule, optionCount> rules = {{
        {"Set/Set", "comboBox_generalsettings", GeneralSetting, "0", "0"},
        {"Image/Image", "Image", OnUnlessNo, "Ok", "Ok"},
        {"Image/ColorType", "comboBox_clr_down_type", Index, "3", "3", 4},
        {"Image/ColorRes", "lineEdit_clr_res", Resolution, "150", "150"},
        {"Image/ColorEnc", "comboBox_clr_compress", Index, "1", "1", 3},
        {"Image/GrayType", "comboBox_gry_down_type", Index, "3", "3", 4},
        {"Image/GrayRes", "lineEdit__gry_res", Resolution, "150", "150"},
        {"Image/GrayEnc", "comboBox_gry_compress", Index, "1", "1", 3},
        {"Image/MonoType", "comboBox__mno_down_type", Index, "3", "3", 4},
        {"Image/MonoRes", "lineEdit_mno_res", Resolution, "300", "300"},
        {"Image/MonoEnc", "comboBox_mno_compress", Index, "4", "4", 5},
        {"Fonts/Fonts", "Fonts", OnUnlessNo, "Ok", "Ok"},
        {"Fonts/Embed", "checkBox_embedallfonts", OnUnlessNo, "Ok", "Ok"},
        {"Fonts/Com", "checkBox_compressfonts", OnUnlessNo, "Ok", "Ok"},
        {"Fonts/Sub", "checkBox_subset", OnUnlessNo, "Ok", "Ok"},
        {"Secur/Secur", "Security", OnUnlessNo, "Ok", "Ok"},
        {"Secur/UsrPwd", "lineEdit_userpassword", Text, "", ""},
        {"Secur/OwrPwd", "lineEdit_ownerpassword", Text, "", ""},
        {"Secur/AllowPri", "checkBox_allow_print", OnUnlessNo, "Ok", "No"},
        {"Secur/AllowMod", "checkBox_allow_modcontents", OnUnlessNo, "Ok", "No"},
        {"Secur/AllowCop", "checkBox_allow_copy", OnUnlessNo, "Ok", "No"},
        {"Secur/AllowAdd", "checkBox_allow_add", OnUnlessNo, "Ok", "No"},
        {"Annot/Annot", "Annotation", OnUnlessNo, "Ok", "Ok"},
        {"Annot/PDFA", "checkBox_pdfa", OffUnlessOk, "No", "No"},
        {"Annot/Aut", "lineEdit_author", Text, "", ""},
        {"Annot/Tit", "lineEdit_title", Text, "", ""},
        {"Annot/Sub", "lineEdit_subject", Text, "", ""},
        {"Annot/Key", "lineEdit_keywords", Text, "", ""},
        {"Annot/Cre", "lineEdit_creator", Text, "", ""},
        {"Annot/Pro", "lineEdit_producer", Text, "", ""},
    }};
    return rules;
}

QString switchText(bool on)
{
    return on ? QStringLiteral("Ok") : QStringLiteral("No");
}

bool onUnlessNo(const QString &stored)
{
    return stored != QLatin1String("No");
}

bool offUnlessOk(const QString &stored)
{
    return stored == QLatin1String("Ok");
}

int storedIndex(const QString &stored, int limit, int fallback)
{
    // The number alone would not do: junk converts to 0, which is an entry.
    bool isNumber = false;
    const int index = stored.toInt(&isNumber);
    return isNumber && index >= 0 && index < limit ? index : fallback;
}

int generalSettingIndex(const QString &stored)
{
    return stored == QLatin1String("1") ? 1 : 0;
}

QString generalSettingText(int index)
{
    return index == 0 ? QStringLiteral("0") : QStringLiteral("1");
}

QString resolutionText(const QString &stored, const QString &fallback)
{
    return stored.isEmpty() ? fallback : stored;
}

PasswordEffect passwordEffect(const QString &userPassword, const QString &ownerPassword)
{
    PasswordEffect effect;
    effect.warnsMark = !userPassword.isEmpty();
    effect.warnsPdfA = !userPassword.isEmpty() || !ownerPassword.isEmpty();
    effect.pdfAEnabled = !effect.warnsPdfA;
    return effect;
}

bool hasResolution(int downsampleType)
{
    return downsampleType != 0;
}

} // namespace quorlin
