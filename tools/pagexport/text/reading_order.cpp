#include "tools/pagexport/text/reading_order.h"

#include "tools/pagexport/text/text_codes.h"

#include <mupdf/ucdn.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>

namespace tools {

namespace {

/// What a sign does to the order of the line.
enum class Direction : std::uint8_t {
    leftToRight,
    rightToLeft,
    number,    ///< a digit
    separator, ///< joins digits on both sides: "1,234.50", "12-34"
    unit,      ///< goes with the digits beside it: "25%"
    mark,      ///< goes with the letter that carries it
    neutral
};

Direction directionOf(int code)
{
    switch (ucdn_get_bidi_class(static_cast<std::uint32_t>(std::max(code, 0)))) {
    case UCDN_BIDI_CLASS_L:
        return Direction::leftToRight;
    case UCDN_BIDI_CLASS_R:
    case UCDN_BIDI_CLASS_AL:
        return Direction::rightToLeft;
    case UCDN_BIDI_CLASS_EN:
    case UCDN_BIDI_CLASS_AN:
        return Direction::number;
    case UCDN_BIDI_CLASS_ES:
    case UCDN_BIDI_CLASS_CS:
        return Direction::separator;
    case UCDN_BIDI_CLASS_ET:
        return Direction::unit;
    case UCDN_BIDI_CLASS_NSM:
        return Direction::mark;
    default:
        return Direction::neutral;
    }
}

/// What one glyph draws, with the marks that it carries; or a blank.
struct Cluster
{
    double along = 0;
    double end = 0;
    Direction direction = Direction::neutral;
    std::vector<int> codes;

    double middle() const { return 0.5 * (along + end); }
    bool isStrong() const
    {
        return direction == Direction::leftToRight || direction == Direction::rightToLeft;
    }
};

using Line = std::vector<Cluster>; ///< from the left to the right

bool covers(const Cluster &cluster, double place, double slack)
{
    return place >= cluster.along - slack && place <= cluster.end + slack;
}

Line clustersOf(const TextRun &run)
{
    Line clusters;
    for (const RunCharacter &character : run.characters) {
        if (!character.ownGlyph && !clusters.empty()) {
            if (character.blankBefore) {
                clusters.back().codes.push_back(' ');
            }
            clusters.back().codes.push_back(character.code);
            if (directionOf(character.code) == Direction::leftToRight) {
                clusters.back().direction = Direction::leftToRight;
            }
        } else {
            clusters.push_back(
                {character.along, character.end, directionOf(character.code), {character.code}});
        }
    }
    return clusters;
}

// A mark is drawn before or after its letter, but over it: the neighbour below it carries it.
Line withMarksCarried(const Line &drawn, double em)
{
    constexpr double reach = 0.1;
    Line carried;
    std::vector<int> waiting;
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        const Cluster &cluster = drawn[i];
        if (cluster.direction != Direction::mark) {
            carried.push_back(cluster);
            std::move(waiting.begin(), waiting.end(), std::back_inserter(carried.back().codes));
            waiting.clear();
            continue;
        }
        const double place = cluster.middle();
        const auto distance = [place](const Cluster &letter) {
            return std::abs(letter.middle() - place);
        };
        const Cluster *next = i + 1 < drawn.size() ? &drawn[i + 1] : nullptr;
        const bool isOverNext = next != nullptr && next->direction != Direction::mark &&
                                covers(*next, place, reach * em);
        const bool isOverLast = !carried.empty() && covers(carried.back(), place, reach * em);
        if (carried.empty() ||
            (isOverNext && (!isOverLast || distance(*next) < distance(carried.back())))) {
            waiting.insert(waiting.end(), cluster.codes.begin(), cluster.codes.end());
        } else {
            std::copy(cluster.codes.begin(), cluster.codes.end(),
                      std::back_inserter(carried.back().codes));
        }
    }
    if (carried.empty() && !waiting.empty()) {
        carried.push_back({0, 0, Direction::neutral, waiting});
    }
    return carried;
}

/// The places of the drawn blanks, asked for from the left to the right.
class DrawnBlanks
{
public:
    explicit DrawnBlanks(const TextRun &run)
    {
        for (const DrawnBlank &blank : run.blanks) {
            m_places.push_back(0.5 * (static_cast<double>(blank.along) + blank.end));
        }
        std::sort(m_places.begin(), m_places.end());
    }
    bool isAnyBetween(double left, double right)
    {
        while (m_next < m_places.size() && m_places[m_next] <= left) {
            ++m_next;
        }
        return m_next < m_places.size() && m_places[m_next] < right;
    }

private:
    std::vector<double> m_places;
    std::size_t m_next = 0;
};

Line visualLine(const TextRun &run, double narrowestBlank)
{
    Line clusters = withMarksCarried(clustersOf(run), run.style.em);
    std::stable_sort(clusters.begin(), clusters.end(),
                     [](const Cluster &a, const Cluster &b) { return a.middle() < b.middle(); });
    DrawnBlanks blanks(run);
    Line line;
    for (Cluster &cluster : clusters) {
        if (!line.empty()) {
            const Cluster &last = line.back();
            const double gap = cluster.along - last.end;
            if (gap > narrowestBlank * run.style.em ||
                blanks.isAnyBetween(last.middle(), cluster.middle())) {
                line.push_back({last.end, cluster.along, Direction::neutral, {' '}});
            }
        }
        line.push_back(std::move(cluster));
    }
    return line;
}

// The line's own direction. Where both ends of it read the same way they tell; else the more
// frequent letters do.
bool readsRightToLeft(const Line &line)
{
    const auto isStrong = [](const Cluster &cluster) { return cluster.isStrong(); };
    const auto first = std::find_if(line.begin(), line.end(), isStrong);
    const auto last = std::find_if(line.rbegin(), line.rend(), isStrong);
    if (first == line.end() || first->direction == last->direction) {
        return first != line.end() && first->direction == Direction::rightToLeft;
    }
    const auto count = [&line](Direction direction) {
        return std::count_if(line.begin(), line.end(), [direction](const Cluster &cluster) {
            return cluster.direction == direction;
        });
    };
    return count(Direction::rightToLeft) > count(Direction::leftToRight);
}

/// Appends clusters to the text, with brackets turned where the file names them by their shape.
class Writer
{
public:
    Writer(std::string &text, const Line &line) : m_text(text), m_line(line) {}

    /// Whether brackets of what reads from the right are named by their shape.
    void setMirrored(bool mirrored) noexcept { m_mirrored = mirrored; }
    void write(std::size_t first, std::size_t last)
    {
        for (std::size_t i = first; i < last; ++i) {
            writeOne(i, false);
        }
    }
    void writeOne(std::size_t index, bool readsRightToLeft)
    {
        const bool mirrored = readsRightToLeft && m_mirrored;
        for (const int code : m_line[index].codes) {
            const bool turns = mirrored && code > 0;
            appendCode(m_text, turns
                                   ? static_cast<int>(ucdn_mirror(static_cast<std::uint32_t>(code)))
                                   : code);
        }
    }

private:
    std::string &m_text;
    const Line &m_line;
    bool m_mirrored = false;
};

bool isNumberPart(const Line &line, std::size_t first, std::size_t index, std::size_t last)
{
    const auto isDigit = [&](std::size_t i) { return line[i].direction == Direction::number; };
    const bool hasDigitBefore = index > first && isDigit(index - 1);
    const bool hasDigitBehind = index + 1 < last && isDigit(index + 1);
    switch (line[index].direction) {
    case Direction::number:
        return true;
    case Direction::separator:
        return hasDigitBefore && hasDigitBehind;
    case Direction::unit:
        return hasDigitBefore || hasDigitBehind;
    default:
        return false;
    }
}

// Producers name a bracket or a quotation mark by what it means or by how it looks. Read in order,
// the first one closes nothing: then they are named by their looks.
bool namesBracketsByShape(const Line &line, std::size_t first, std::size_t last)
{
    for (std::size_t i = last; i > first; --i) {
        const int signedCode = line[i - 1].codes.front();
        const auto code = static_cast<std::uint32_t>(std::max(signedCode, 0));
        const int category = ucdn_get_general_category(code);
        const bool opens =
            category == UCDN_GENERAL_CATEGORY_PS || category == UCDN_GENERAL_CATEGORY_PI;
        const bool closes =
            category == UCDN_GENERAL_CATEGORY_PE || category == UCDN_GENERAL_CATEGORY_PF;
        if ((opens || closes) && ucdn_get_mirrored(code) != 0) {
            return closes;
        }
    }
    return false;
}

// A stretch without right-to-left letters, inside a line that reads that way: words keep their
// order with all that stands among them, numbers alone follow one another from the right.
void writeStretch(Writer &writer, const Line &line, std::size_t first, std::size_t last)
{
    const auto isKept = [&line](std::size_t i) {
        return line[i].direction == Direction::leftToRight ||
               line[i].direction == Direction::number;
    };
    std::size_t begin = first;
    std::size_t end = last;
    while (end > begin && !isKept(end - 1) && !isNumberPart(line, first, end - 1, last)) {
        writer.writeOne(--end, true);
    }
    while (begin < end && !isKept(begin) && !isNumberPart(line, first, begin, last)) {
        ++begin;
    }
    if (std::any_of(line.begin() + static_cast<std::ptrdiff_t>(begin),
                    line.begin() + static_cast<std::ptrdiff_t>(end), [](const Cluster &cluster) {
                        return cluster.direction == Direction::leftToRight;
                    })) {
        writer.write(begin, end);
        end = begin;
    }
    while (end > begin) {
        std::size_t start = end;
        while (start > begin && isNumberPart(line, first, start - 1, last)) {
            --start;
        }
        if (start == end) {
            writer.writeOne(--end, true);
        } else {
            writer.write(start, end);
            end = start;
        }
    }
    while (end > first) {
        writer.writeOne(--end, true);
    }
}

void writeRightToLeft(Writer &writer, const Line &line, std::size_t first, std::size_t last)
{
    writer.setMirrored(namesBracketsByShape(line, first, last));
    while (last > first) {
        std::size_t start = last;
        while (start > first && line[start - 1].direction != Direction::rightToLeft) {
            --start;
        }
        writeStretch(writer, line, start, last);
        last = start;
        if (last > first) {
            writer.writeOne(--last, true);
        }
    }
}

void writeLeftToRight(Writer &writer, const Line &line)
{
    std::size_t i = 0;
    while (i < line.size()) {
        if (line[i].direction != Direction::rightToLeft) {
            writer.writeOne(i++, false);
            continue;
        }
        std::size_t end = i + 1;
        for (std::size_t j = end; j < line.size(); ++j) {
            if (line[j].direction == Direction::leftToRight) {
                break;
            }
            end = line[j].direction == Direction::rightToLeft ? j + 1 : end;
        }
        writeRightToLeft(writer, line, i, end);
        i = end;
    }
}

} // namespace

void appendInReadingOrder(std::string &text, const TextRun &run, double narrowestBlank)
{
    const Line line = visualLine(run, narrowestBlank);
    Writer writer(text, line);
    if (readsRightToLeft(line)) {
        writeRightToLeft(writer, line, 0, line.size());
    } else {
        writeLeftToRight(writer, line);
    }
}

} // namespace tools
