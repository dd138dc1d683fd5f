#pragma once

#include "test_pdf.h"

#include <QByteArrayList>
#include <QList>

#include <random>
#include <set>

/// A document with a random structure tree in the shapes that the format allows; always the same
/// for a seed. Every mark is in one element, neighbouring marks often in the same one.
class RandomTags
{
public:
    RandomTags(unsigned seed, int pages, int mostMarksOnAPage);

    const TestPdf &pdf() const { return m_pdf; }
    int pageCount() const { return m_pageCount; }

    /// Up to four pages and ranges of them, in any order: "3 1-2".
    QString randomRanges();

    /// Titles, "(e12)", of the elements that have content, but none on @p pages.
    QByteArrayList titlesApartFrom(const QList<int> &pages) const;

private:
    struct Mark
    {
        int page; ///< counted from 1
        int number;
    };
    struct Element
    {
        QList<int> kids;
        QList<Mark> marks;
        int linkPage = 0; ///< the page whose link it is
        int link = 0;     ///< object number
        std::set<int> pages;
    };

    int below(int bound) { return static_cast<int>(m_random() % static_cast<unsigned>(bound)); }
    bool maybe(int oneIn) { return below(oneIn) == 0; }
    int numberOf(int index) const { return 10 * m_pageCount + 100 + index; }
    int add(const Element &element);

    QList<Mark> makeMarks(int most);
    void makeLeaves(const QList<Mark> &marks);
    void makeLevels();
    void collectPages(int index);
    void write();
    void writePage(int page, int key);
    void writeElement(int index, int parent);
    QByteArray kidsOf(const Element &element, int page);
    void writeParentTree(const QList<int> &keys);
    QByteArray listFor(int page) const;
    QByteArray elsewhere(const QByteArray &source);

    std::mt19937 m_random;
    int m_pageCount;
    int m_free = 0; ///< the next number for an object of another kind
    QList<Element> m_elements;
    QList<int> m_top;
    TestPdf m_pdf;
};
