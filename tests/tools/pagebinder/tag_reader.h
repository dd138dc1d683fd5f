#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <map>
#include <set>
#include <utility>

struct fz_context;
struct pdf_document;
struct pdf_obj;

/// Reads the structure tags of a PDF file in the plainest way, from the root down, each element at
/// the first place that lists it.
class TagReader
{
public:
    /// Opens the file @p path; without one pages() is empty.
    explicit TagReader(const QString &path);
    ~TagReader();
    TagReader(const TagReader &) = delete;
    TagReader &operator=(const TagReader &) = delete;

    bool isTagged() const { return m_isTagged; }
    int pageCount() const { return static_cast<int>(m_pages.size()); }

    /// What is marked on a page, counted from 1: the types and texts from the root to the element
    /// ("Document/Sect/P(alternative text)") of each mark, by its number; of annotations below -1.
    QMap<int, QByteArray> marksOn(int page) const { return m_marks.value(page); }

    /// Where the tree contradicts itself: marks on pages that the file does not have, entries of
    /// the parent tree that differ from the lists of kids, parents that do not list their child.
    QStringList faults() const { return m_faults; }

private:
    struct Node
    {
        pdf_obj *element;
        int number;
        int page;
        QByteArray path;
    };

    void read();
    void readPages();
    void readParentTree(pdf_obj *node, int depth);
    void visit(const Node &node);
    void visitKid(const Node &node, pdf_obj *kid, int depth);
    void visitMark(const Node &node, pdf_obj *reference, int mark);
    void visitObject(const Node &node, pdf_obj *reference);
    void checkParentTree();
    QByteArray stepOf(pdf_obj *element);
    int pageOf(pdf_obj *reference, int inherited);
    int elementFor(pdf_obj *owner, const char *key, int mark);
    void fault(const QString &text) { m_faults << text; }

    fz_context *m_context;
    pdf_document *m_document = nullptr;
    bool m_isTagged = false;
    QList<pdf_obj *> m_pages;
    std::map<int, QList<int>> m_pageNumbers;   ///< object number to pages, counted from 1
    std::map<int, pdf_obj *> m_parents;        ///< the parent tree
    std::set<int> m_visited;                   ///< object numbers
    std::set<std::pair<int, int>> m_confirmed; ///< key of the parent tree, mark
    QList<Node> m_waiting;
    QMap<int, QMap<int, QByteArray>> m_marks;
    QStringList m_faults;
};
