#pragma once

#include "options/opdialog.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

/// The child @p name of @p dialog; fails the program when there is none.
template <typename Widget = QWidget> Widget *child(const OpDialog &dialog, const char *name)
{
    auto *widget = dialog.findChild<Widget *>(QString::fromLatin1(name));
    if (widget == nullptr) {
        qFatal("no child %s", name);
    }
    return widget;
}

/// Shows @p dialog and waits until it has the keyboard.
inline void open(OpDialog &dialog)
{
    dialog.show();
    dialog.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
}

/// Shows the page of list row @p row by a click on its entry's text.
inline void openPage(const OpDialog &dialog, int row)
{
    auto *list = child<QListWidget>(dialog, "listWidge_option");
    const QRect entry = list->visualItemRect(list->item(row));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      QPoint(entry.right() - 10, entry.center().y()));
}

/// Picks entry @p index of the list @p name by the keyboard, as a user does.
inline void pick(const OpDialog &dialog, const char *name, int index)
{
    auto *combo = child<QComboBox>(dialog, name);
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_Home);
    for (int i = 0; i < index; ++i) {
        QTest::keyClick(combo, Qt::Key_Down);
    }
}

/// Replaces the text of field @p name by typing, and leaves the field.
inline void type(const OpDialog &dialog, const char *name, const QString &text)
{
    auto *field = child<QLineEdit>(dialog, name);
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text);
    QTest::keyClick(field, Qt::Key_Tab);
}
