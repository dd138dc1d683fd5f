#include "random_tags.h"

#include <algorithm>

namespace {

constexpr int tree = 4;
constexpr int parentTree = 5;

QByteArray reference(int number)
{
    return QByteArray::number(number) + " 0 R";
}

} // namespace

RandomTags::RandomTags(unsigned seed, int pages, int mostMarksOnAPage)
    : m_random(seed), m_pageCount(pages)
{
    makeLeaves(makeMarks(mostMarksOnAPage));
    makeLevels();
    for (const int index : std::as_const(m_top)) {
        collectPages(index);
    }
    write();
}

int RandomTags::add(const Element &element)
{
    m_elements << element;
    return static_cast<int>(m_elements.size()) - 1;
}

QList<RandomTags::Mark> RandomTags::makeMarks(int most)
{
    QList<Mark> marks;
    for (int page = 1; page <= m_pageCount; ++page) {
        const int count = below(most + 1);
        for (int number = 0; number < count; ++number) {
            marks << Mark{page, number};
        }
    }
    // The order of reading need not be that of the pages.
    for (int swaps = maybe(3) ? 3 : 0; swaps > 0 && !marks.isEmpty(); --swaps) {
        marks.swapItemsAt(below(static_cast<int>(marks.size())),
                          below(static_cast<int>(marks.size())));
    }
    return marks;
}

/// Neighbouring marks make an element, also over the end of a page; some elements have nothing.
void RandomTags::makeLeaves(const QList<Mark> &marks)
{
    for (qsizetype i = 0; i < marks.size();) {
        Element leaf;
        for (int count = 1 + below(4); count > 0 && i < marks.size(); --count) {
            leaf.marks << marks.at(i++);
        }
        m_top << add(leaf);
        if (maybe(6)) {
            m_top << add(Element());
        }
    }
    for (int page = 1; page <= m_pageCount; ++page) {
        if (maybe(3)) {
            Element link;
            link.linkPage = page;
            m_top << add(link);
        }
    }
}

/// Puts neighbours into elements above them, level by level.
void RandomTags::makeLevels()
{
    for (int level = below(5); level > 0; --level) {
        QList<int> above;
        for (qsizetype i = 0; i < m_top.size();) {
            Element element;
            for (int count = 1 + below(5); count > 0 && i < m_top.size(); --count) {
                element.kids << m_top.at(i++);
            }
            above << add(element);
        }
        m_top = above;
    }
}

void RandomTags::collectPages(int index)
{
    std::set<int> pages;
    for (const Mark &mark : std::as_const(m_elements[index].marks)) {
        pages.insert(mark.page);
    }
    if (m_elements[index].linkPage != 0) {
        pages.insert(m_elements[index].linkPage);
    }
    const QList<int> kids = m_elements.at(index).kids;
    for (const int kid : kids) {
        collectPages(kid);
        pages.insert(m_elements[kid].pages.begin(), m_elements[kid].pages.end());
    }
    m_elements[index].pages = pages;
}

QByteArrayList RandomTags::titlesApartFrom(const QList<int> &pages) const
{
    QByteArrayList titles;
    for (int index = 0; index < m_elements.size(); ++index) {
        const std::set<int> &own = m_elements.at(index).pages;
        if (!own.empty() && std::none_of(own.begin(), own.end(),
                                         [&pages](int page) { return pages.contains(page); })) {
            titles << "(e" + QByteArray::number(index) + ')';
        }
    }
    return titles;
}

QString RandomTags::randomRanges()
{
    QStringList ranges;
    for (int count = 1 + below(4); count > 0; --count) {
        const int first = 1 + below(m_pageCount);
        ranges << (maybe(2) ? QString::number(first)
                            : QStringLiteral("%1-%2").arg(first).arg(
                                  std::min(m_pageCount, first + below(3))));
    }
    return ranges.join(' ');
}

void RandomTags::write()
{
    m_free = numberOf(static_cast<int>(m_elements.size()));
    m_pdf = TestPdf::pages(m_pageCount, "/StructTreeRoot 4 0 R/MarkInfo<</Marked true>>/Lang(en)");
    QList<int> keys;
    for (int page = 0; page < m_pageCount; ++page) {
        keys << 2 * page;
    }
    std::shuffle(keys.begin(), keys.end(), m_random);
    for (int page = 1; page <= m_pageCount; ++page) {
        writePage(page, keys.at(page - 1));
    }
    QByteArray top;
    for (const int index : std::as_const(m_top)) {
        top += reference(numberOf(index)) + ' ';
        writeElement(index, tree);
    }
    m_pdf.object(tree, "<</Type/StructTreeRoot/K[" + top + "]/ParentTree 5 0 R>>");
    writeParentTree(keys);
}

void RandomTags::writePage(int page, int key)
{
    QByteArray annotations;
    for (Element &element : m_elements) {
        if (element.linkPage == page) {
            element.link = m_free++;
            annotations += reference(element.link);
            m_pdf.object(element.link,
                         "<</Type/Annot/Subtype/Link/Rect[0 0 9 9]/A<</S/URI/URI(x:y)>>"
                         "/StructParent " +
                             QByteArray::number(key + 1) + ">>");
        }
    }
    m_pdf.object(10 * page,
                 "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 200]/Resources<<>>/Contents " +
                     reference(10 * page + 1) + "/StructParents " + QByteArray::number(key) +
                     "/Annots[" + annotations + "]>>");
}

/// The source as it is, or a reference to an object that holds it.
QByteArray RandomTags::elsewhere(const QByteArray &source)
{
    if (!maybe(5)) {
        return source;
    }
    m_pdf.object(m_free, source);
    return reference(m_free++);
}

void RandomTags::writeElement(int index, int parent)
{
    const Element &element = m_elements.at(index);
    const bool hasPage = !element.marks.isEmpty() && !maybe(4);
    const int page = hasPage ? element.marks.first().page : 0;
    m_pdf.object(numberOf(index),
                 "<</Type/StructElem/S/" + QByteArray(element.kids.isEmpty() ? "P" : "Sect") +
                     "/P " + reference(parent) +
                     (hasPage ? "/Pg " + reference(10 * page) : QByteArray()) + "/T(e" +
                     QByteArray::number(index) + ')' + kidsOf(element, page) + ">>");
    for (const int kid : element.kids) {
        writeElement(kid, numberOf(index));
    }
}

QByteArray RandomTags::kidsOf(const Element &element, int page)
{
    QByteArrayList kids;
    for (const int kid : element.kids) {
        kids << reference(numberOf(kid));
    }
    for (const Mark &mark : element.marks) {
        const QByteArray number = QByteArray::number(mark.number);
        const bool isOwn = mark.page == page;
        const QByteArray where =
            isOwn && maybe(2) ? QByteArray() : "/Pg " + reference(10 * mark.page);
        kids << (isOwn && !maybe(4) ? number
                                    : elsewhere("<</Type/MCR" + where + "/MCID " + number + ">>"));
    }
    if (element.link != 0) {
        kids << "<</Type/OBJR/Obj " + reference(element.link) + "/Pg " +
                    reference(10 * element.linkPage) + ">>";
    }
    if (kids.isEmpty() && maybe(2)) {
        return {};
    }
    return kids.size() == 1 && maybe(2) ? "/K " + kids.first()
                                        : "/K " + elsewhere('[' + kids.join(' ') + ']');
}

QByteArray RandomTags::listFor(int page) const
{
    QMap<int, int> elements;
    for (int index = 0; index < m_elements.size(); ++index) {
        for (const Mark &mark : m_elements.at(index).marks) {
            if (mark.page == page) {
                elements[mark.number] = numberOf(index);
            }
        }
    }
    QByteArray list;
    for (const int number : std::as_const(elements)) {
        list += reference(number) + ' ';
    }
    return '[' + list + ']';
}

void RandomTags::writeParentTree(const QList<int> &keys)
{
    QMap<int, QByteArray> entries;
    for (int page = 1; page <= m_pageCount; ++page) {
        entries[keys.at(page - 1)] = elsewhere(listFor(page));
    }
    for (int index = 0; index < m_elements.size(); ++index) {
        const int page = m_elements.at(index).linkPage;
        if (page != 0) {
            entries[keys.at(page - 1) + 1] = reference(numberOf(index));
        }
    }
    const qsizetype inANode = maybe(2) ? entries.size() : 3;
    QByteArray nodes;
    for (auto entry = entries.cbegin(); entry != entries.cend();) {
        QByteArray numbers;
        const QByteArray first = QByteArray::number(entry.key());
        QByteArray last;
        for (qsizetype i = 0; i < inANode && entry != entries.cend(); ++i, ++entry) {
            last = QByteArray::number(entry.key());
            numbers += last + ' ' + entry.value() + ' ';
        }
        const QByteArray node = "/Nums[" + numbers + ']';
        if (inANode == entries.size()) {
            m_pdf.object(parentTree, "<<" + node + ">>");
            return;
        }
        m_pdf.object(m_free, "<</Limits[" + first + ' ' + last + ']' + node + ">>");
        nodes += reference(m_free++) + ' ';
    }
    m_pdf.object(parentTree, "<</Kids[" + nodes + "]>>");
}
