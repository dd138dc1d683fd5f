#include "options/option_rules.h"
#include "tests/support/room.h"

#include <QSet>
#include <QTest>

using namespace quorlin;

class OptionRulesTest : public QObject
{
    Q_OBJECT

private slots:
    void indexOutOfRangeFallsBack_data();
    void indexOutOfRangeFallsBack();
    void switchesReadTheirOneWord_data();
    void switchesReadTheirOneWord();
    void onlyOneSelectsCustom_data();
    void onlyOneSelectsCustom();
    void emptyResolutionFallsBack_data();
    void emptyResolutionFallsBack();
    void passwordsRuleOut_data();
    void passwordsRuleOut();
    void onlyClosedHasNoResolution();
    void writtenTextIsReadBack();
    void keysAndControlsAreUnique();
    void everyOptionHasItsKeyControlAndDefaults();
};

void OptionRulesTest::indexOutOfRangeFallsBack_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("fallback");
    QTest::addColumn<int>("index");
    QTest::newRow("first entry") << "0" << 4 << 3 << 0;
    QTest::newRow("last entry") << "3" << 4 << 1 << 3;
    QTest::newRow("one past the end") << "4" << 4 << 3 << 3;
    QTest::newRow("far past the end") << "7" << 4 << 3 << 3;
    QTest::newRow("past the end of three") << "3" << 3 << 1 << 1;
    QTest::newRow("past the end of five") << "5" << 5 << 4 << 4;
    QTest::newRow("negative") << "-1" << 4 << 3 << 3;
    QTest::newRow("word") << "abc" << 4 << 3 << 3;
    QTest::newRow("empty") << "" << 3 << 1 << 1;
    QTest::newRow("fraction") << "1.0" << 3 << 2 << 2;
    QTest::newRow("too large for a number") << "99999999999" << 4 << 3 << 3;
    QTest::newRow("wraps to zero in 32 bits") << "4294967296" << 4 << 3 << 3;
}

void OptionRulesTest::indexOutOfRangeFallsBack()
{
    QFETCH(QString, stored);
    QFETCH(int, limit);
    QFETCH(int, fallback);
    QTEST(storedIndex(stored, limit, fallback), "index");
}

void OptionRulesTest::switchesReadTheirOneWord_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("unlessNo");
    QTest::addColumn<bool>("onlyOk");
    QTest::newRow("Ok") << "Ok" << true << true;
    QTest::newRow("No") << "No" << false << false;
    QTest::newRow("empty") << "" << true << false;
    QTest::newRow("other case") << "no" << true << false;
    QTest::newRow("Ok in other case") << "OK" << true << false;
    QTest::newRow("number") << "0" << true << false;
    QTest::newRow("blank after it") << "No " << true << false;
}

void OptionRulesTest::switchesReadTheirOneWord()
{
    QFETCH(QString, stored);
    QTEST(onUnlessNo(stored), "unlessNo");
    QTEST(offUnlessOk(stored), "onlyOk");
}

void OptionRulesTest::onlyOneSelectsCustom_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("index");
    QTest::newRow("0") << "0" << 0;
    QTest::newRow("1") << "1" << 1;
    QTest::newRow("2") << "2" << 0;
    QTest::newRow("-1") << "-1" << 0;
    QTest::newRow("01") << "01" << 0;
    QTest::newRow("empty") << "" << 0;
    QTest::newRow("caption") << "Custom" << 0;
}

void OptionRulesTest::onlyOneSelectsCustom()
{
    QFETCH(QString, stored);
    QTEST(generalSettingIndex(stored), "index");
}

void OptionRulesTest::emptyResolutionFallsBack_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << ""
                           << "150";
    QTest::newRow("number") << "72"
                            << "72";
    QTest::newRow("no number stays as typed") << "fine"
                                              << "fine";
    QTest::newRow("blank is not empty") << " "
                                        << " ";
}

void OptionRulesTest::emptyResolutionFallsBack()
{
    QFETCH(QString, stored);
    QTEST(resolutionText(stored, QStringLiteral("150")), "text");
}

void OptionRulesTest::passwordsRuleOut_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("owner");
    QTest::addColumn<bool>("mark");
    QTest::addColumn<bool>("pdfA");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("none") << ""
                          << "" << false << false << true;
    QTest::newRow("user") << "u"
                          << "" << true << true << false;
    QTest::newRow("owner") << ""
                           << "o" << false << true << false;
    QTest::newRow("both") << "u"
                          << "o" << true << true << false;
    QTest::newRow("a blank is a password") << " "
                                           << "" << true << true << false;
}

void OptionRulesTest::passwordsRuleOut()
{
    QFETCH(QString, user);
    QFETCH(QString, owner);
    const PasswordEffect effect = passwordEffect(user, owner);
    QTEST(effect.warnsMark, "mark");
    QTEST(effect.warnsPdfA, "pdfA");
    QTEST(effect.pdfAEnabled, "enabled");
}

void OptionRulesTest::onlyClosedHasNoResolution()
{
    QVERIFY(!hasResolution(0));
    for (int type = 1; type < 4; ++type) {
        QVERIFY(hasResolution(type));
    }
}

void OptionRulesTest::writtenTextIsReadBack()
{
    for (const bool on : {true, false}) {
        QCOMPARE(onUnlessNo(switchText(on)), on);
        QCOMPARE(offUnlessOk(switchText(on)), on);
    }
    for (const int index : {0, 1}) {
        QCOMPARE(generalSettingIndex(generalSettingText(index)), index);
    }
}

void OptionRulesTest::keysAndControlsAreUnique()
{
    QSet<QByteArray> keys;
    QSet<QByteArray> controls;
    for (const OptionRule &rule : optionRules()) {
        keys.insert(rule.key);
        controls.insert(rule.control);
        QCOMPARE(rule.limit > 0, rule.kind == OptionKind::Index);
    }
    QCOMPARE(keys.size(), optionCount);
    QCOMPARE(controls.size(), optionCount);
}

void OptionRulesTest::everyOptionHasItsKeyControlAndDefaults()
{
    // Key, control, how it is read, what an absent key stands for, what "Standard" sets. The keys
    // stand in the order in which they are written.
    const char *const expected[] = {
        "Set/Set comboBox_generalsettings general 0 0",
        "Image/Image Image on Ok Ok",
        "Image/ColorType comboBox_clr_down_type below 4 3 3",
        "Image/ColorRes lineEdit_clr_res filled 150 150",
        "Image/ColorEnc comboBox_clr_compress below 3 1 1",
        "Image/GrayType comboBox_gry_down_type below 4 3 3",
        "Image/GrayRes lineEdit__gry_res filled 150 150",
        "Image/GrayEnc comboBox_gry_compress below 3 1 1",
        "Image/MonoType comboBox__mno_down_type below 4 3 3",
        "Image/MonoRes lineEdit_mno_res filled 300 300",
        "Image/MonoEnc comboBox_mno_compress below 5 4 4",
        "Fonts/Fonts Fonts on Ok Ok",
        "Fonts/Embed checkBox_embedallfonts on Ok Ok",
        "Fonts/Com checkBox_compressfonts on Ok Ok",
        "Fonts/Sub checkBox_subset on Ok Ok",
        "Secur/Secur Security on Ok Ok",
        "Secur/UsrPwd lineEdit_userpassword text - -",
        "Secur/OwrPwd lineEdit_ownerpassword text - -",
        "Secur/AllowPri checkBox_allow_print on Ok No",
        "Secur/AllowMod checkBox_allow_modcontents on Ok No",
        "Secur/AllowCop checkBox_allow_copy on Ok No",
        "Secur/AllowAdd checkBox_allow_add on Ok No",
        "Annot/Annot Annotation on Ok Ok",
        "Annot/PDFA checkBox_pdfa off No No",
        "Annot/Aut lineEdit_author text - -",
        "Annot/Tit lineEdit_title text - -",
        "Annot/Sub lineEdit_subject text - -",
        "Annot/Key lineEdit_keywords text - -",
        "Annot/Cre lineEdit_creator text - -",
        "Annot/Pro lineEdit_producer text - -",
    };
    const auto kind = [](const OptionRule &rule) {
        switch (rule.kind) {
        case OptionKind::GeneralSetting:
            return QByteArray("general");
        case OptionKind::OnUnlessNo:
            return QByteArray("on");
        case OptionKind::OffUnlessOk:
            return QByteArray("off");
        case OptionKind::Index:
            return "below " + QByteArray::number(rule.limit);
        case OptionKind::Resolution:
            return QByteArray("filled");
        case OptionKind::Text:
            return QByteArray("text");
        }
        return QByteArray();
    };
    const auto shown = [](const char *text) { return *text == '\0' ? "-" : text; };
    QCOMPARE(qsizetype(std::size(expected)), qsizetype(optionCount));
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        const OptionRule &rule = optionRules().at(i);
        const QByteArray found = QByteArray(rule.key) + ' ' + rule.control + ' ' + kind(rule) +
                                 ' ' + shown(rule.fallback) + ' ' + shown(rule.standard);
        QCOMPARE(found, QByteArray(expected[i]));
    }
}

QUORLIN_TEST(OptionRulesTest)
#include "test_option_rules.moc"
