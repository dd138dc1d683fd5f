#pragma once

#include "analysis/subtext.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QStringList>

#include <optional>

namespace quorlin {

// What "pagexport -items" writes: of every page, in page order, a line
//   page <number> <width> <height> whole|partial|unreadable
// and below it a line for each of its items,
//   item <number of the page> <left> <top> <width> <height> <text>
// and after the last page a line "end <number of pages>", which is missing where the export broke
// off. Tabs stand between the fields, the text is plain UTF-8 without control characters. Of a long
// file these are megabytes, so the lines are looked at as bytes and only a page's text is decoded.

/// The fields of an item line behind the page's number: "LEFT TOP WIDTH HEIGHT TEXT".
using ItemFields = QByteArrayView;

/// The item in @p fields; nothing when they are not built as they should be.
std::optional<Subtext> readItem(ItemFields fields);

/// The frame of the item in @p fields, and its text, not yet decoded, as a view of them; nothing
/// when they are not built as they should be.
std::optional<QRect> readFrame(ItemFields fields, QByteArrayView &text);

/// Decodes the text of an item.
QString decodedText(QByteArrayView bytes);

/// Tells which item of a page gives the page its text. A page's items come in the order in which
/// the page draws them.
class TextRule
{
public:
    TextRule() = default;
    virtual ~TextRule() = default;
    TextRule(const TextRule &) = delete;
    TextRule &operator=(const TextRule &) = delete;

    /// Takes the next item of the page.
    virtual void takeItem(ItemFields fields) = 0;
    /// Ends the page and gives its text; nothing when it has none.
    virtual std::optional<QString> endPage() = 0;
};

/// The text of the first item whose left and top are exactly those given.
class PositionRule : public TextRule
{
public:
    explicit PositionRule(QPoint position);
    void takeItem(ItemFields fields) override;
    std::optional<QString> endPage() override;

private:
    QByteArray prefix; ///< how the fields of such an item begin
    QString lastText;  ///< neighbouring pages often share it, and then its memory
    QByteArray lastBytes;
    std::optional<QString> found;
};

/// What the pages of a file say.
struct PageTexts
{
    /// One entry a page; noTextMarker() where the rule found none.
    QStringList texts;
    /// Pages, counted from 1, that could not be read at all.
    QList<int> unreadable;
    /// Pages of which a part could not be read and on which the rule found no text, so that it may
    /// stand in that part.
    QList<int> doubtful;
    /// Pages of which a part could not be read.
    qsizetype partial = 0;
    qsizetype withoutText = 0;
};

/// With how many threads the texts of @p pages pages are read where @p places tools may run at the
/// same time: a long file gets all of them, a short one, of which there are often many, a single
/// one.
int threadsForPages(int pages, int places);

/// Reads the lines of "pagexport -items" as they arrive, in pieces cut anywhere.
class PageItemsReader
{
public:
    /// @param textRule gives the pages their texts; must outlive the reader
    /// @param firstPage number of the first page that comes
    explicit PageItemsReader(TextRule &textRule, int firstPage = 1)
        : rule(textRule), pageBefore(firstPage - 1)
    {
    }

    void take(const QByteArray &bytes);

    /// Whether the last line came and says what was read.
    bool isComplete() const { return ended && !malformed; }
    /// Whether a line was not built as it should be.
    bool isMalformed() const { return malformed; }
    /// Pages that were read to their end.
    int pagesRead() const { return static_cast<int>(result.texts.size()); }
    const PageTexts &pages() const { return result; }

private:
    void takeLine(QByteArrayView line);
    bool takePage(QByteArrayView fields);
    bool takeItem(QByteArrayView fields);
    bool takeEnd(QByteArrayView fields);
    void endPage();

    enum class PageState { None, Whole, Partial, Unreadable };

    TextRule &rule;
    int pageBefore; ///< number of the page before the first one
    PageTexts result;
    QByteArray rest; ///< the beginning of a line whose end has not arrived
    PageState state = PageState::None;
    bool ended = false;
    bool malformed = false;
};

} // namespace quorlin
