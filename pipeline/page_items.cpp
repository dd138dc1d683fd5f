#include "pipeline/page_items.h"

#include "analysis/grouping.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <utility>

namespace quorlin {

namespace {

/// So many pages keep a thread busy for some times as long as its start takes.
constexpr int pagesWorthAThread = 64;

constexpr QByteArrayView pageWord("page\t");
constexpr QByteArrayView itemWord("item\t");
constexpr QByteArrayView endWord("end\t");

std::optional<int> wholeNumber(QByteArrayView digits)
{
    int number = 0;
    const char *end = digits.data() + digits.size();
    const auto [stopped, error] = std::from_chars(digits.data(), end, number);
    return error == std::errc() && stopped == end ? std::optional(number) : std::nullopt;
}

/// Takes the field up to the next tab off @p fields; all of it where no tab is left.
QByteArrayView takeField(QByteArrayView &fields)
{
    const qsizetype tab = fields.indexOf('\t');
    const QByteArrayView field = tab < 0 ? fields : fields.first(tab);
    fields = tab < 0 ? QByteArrayView() : fields.sliced(tab + 1);
    return field;
}

/// The text behind the four numbers of an item.
QByteArrayView textOf(ItemFields fields)
{
    for (int number = 0; number < 4; ++number) {
        takeField(fields);
    }
    return fields;
}

} // namespace

std::optional<QRect> readFrame(ItemFields fields, QByteArrayView &text)
{
    std::array<int, 4> numbers{};
    for (int &number : numbers) {
        const std::optional<int> value = wholeNumber(takeField(fields));
        if (value.value_or(-1) < 0) {
            return std::nullopt;
        }
        number = *value;
    }
    text = fields;
    // A rectangle of Qt's keeps its last row and column, which must not overflow.
    return QRect(QPoint(numbers[0], numbers[1]),
                 QSize(std::min(numbers[2], std::numeric_limits<int>::max() - numbers[0]),
                       std::min(numbers[3], std::numeric_limits<int>::max() - numbers[1])));
}

std::optional<Subtext> readItem(ItemFields fields)
{
    QByteArrayView text;
    const std::optional<QRect> frame = readFrame(fields, text);
    if (!frame) {
        return std::nullopt;
    }
    return Subtext{frame->x(), frame->y(), frame->width(), frame->height(), decodedText(text)};
}

QString decodedText(QByteArrayView bytes)
{
    // A mark at the text's beginning is a character of it, not a sign of how it is encoded.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringConverter::Flag::ConvertInitialBom);
    return decoder.decode(bytes);
}

PositionRule::PositionRule(QPoint position)
    : prefix(QByteArray::number(position.x()) + '\t' + QByteArray::number(position.y()) + '\t')
{
}

void PositionRule::takeItem(ItemFields fields)
{
    if (found || !fields.startsWith(prefix)) {
        return;
    }
    const QByteArrayView text = textOf(fields);
    if (lastText.isNull() || text != lastBytes) {
        lastBytes = text.toByteArray();
        lastText = decodedText(text);
    }
    found = lastText;
}

std::optional<QString> PositionRule::endPage()
{
    return std::exchange(found, std::nullopt);
}

int threadsForPages(int pages, int places)
{
    return std::clamp(pages / pagesWorthAThread, 1, std::max(places, 1));
}

void PageItemsReader::take(const QByteArray &bytes)
{
    qsizetype begin = 0;
    if (!rest.isEmpty()) {
        const qsizetype end = bytes.indexOf('\n');
        if (end < 0) {
            rest += bytes;
            return;
        }
        rest += QByteArrayView(bytes).first(end);
        takeLine(rest);
        rest.clear();
        begin = end + 1;
    }
    for (qsizetype end = bytes.indexOf('\n', begin); end >= 0; end = bytes.indexOf('\n', begin)) {
        takeLine(QByteArrayView(bytes).sliced(begin, end - begin));
        begin = end + 1;
    }
    rest = bytes.sliced(begin);
}

void PageItemsReader::takeLine(QByteArrayView line)
{
    bool understood = false;
    if (ended) {
        understood = false;
    } else if (line.startsWith(itemWord)) {
        understood = takeItem(line.sliced(itemWord.size()));
    } else if (line.startsWith(pageWord)) {
        understood = takePage(line.sliced(pageWord.size()));
    } else if (line.startsWith(endWord)) {
        understood = takeEnd(line.sliced(endWord.size()));
    }
    malformed = malformed || !understood;
}

bool PageItemsReader::takePage(QByteArrayView fields)
{
    endPage();
    const std::optional<int> number = wholeNumber(takeField(fields));
    takeField(fields); // width
    takeField(fields); // height
    if (fields == QByteArrayView("whole")) {
        state = PageState::Whole;
    } else if (fields == QByteArrayView("partial")) {
        state = PageState::Partial;
    } else if (fields == QByteArrayView("unreadable")) {
        state = PageState::Unreadable;
    }
    return state != PageState::None && number == pageBefore + pagesRead() + 1;
}

bool PageItemsReader::takeItem(QByteArrayView fields)
{
    const qsizetype tab = fields.indexOf('\t');
    if (state == PageState::None || tab < 0) {
        return false;
    }
    rule.takeItem(fields.sliced(tab + 1));
    return true;
}

bool PageItemsReader::takeEnd(QByteArrayView fields)
{
    endPage();
    ended = true;
    return wholeNumber(fields) == pagesRead();
}

void PageItemsReader::endPage()
{
    const PageState ending = std::exchange(state, PageState::None);
    if (ending == PageState::None) {
        return;
    }
    const std::optional<QString> text = rule.endPage();
    result.texts.append(text.value_or(noTextMarker()));
    const int page = pageBefore + pagesRead();
    result.withoutText += text ? 0 : 1;
    if (ending == PageState::Unreadable) {
        result.unreadable.append(page);
    }
    if (ending == PageState::Partial) {
        ++result.partial;
        if (!text) {
            result.doubtful.append(page);
        }
    }
}

} // namespace quorlin
