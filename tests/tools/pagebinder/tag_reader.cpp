#include "tag_reader.h"

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <QFile>

namespace {

constexpr int deepest = 50;

void ignore(void *, const char *) {}

} // namespace

TagReader::TagReader(const QString &path)
    : m_context(fz_new_context(nullptr, nullptr, FZ_STORE_UNLIMITED))
{
    fz_set_warning_callback(m_context, ignore, nullptr);
    fz_set_error_callback(m_context, ignore, nullptr);
    const QByteArray name = QFile::encodeName(path); // here, as an error leaves it behind
    fz_try(m_context)
    {
        m_document = pdf_open_document(m_context, name.constData());
        pdf_needs_password(m_context, m_document); // tries the empty one
        read();
    }
    fz_catch(m_context)
    {
        fault(QString::fromUtf8(fz_caught_message(m_context)));
    }
}

TagReader::~TagReader()
{
    pdf_drop_document(m_context, m_document);
    fz_drop_context(m_context);
}

void TagReader::read()
{
    readPages();
    pdf_obj *catalog = pdf_dict_gets(m_context, pdf_trailer(m_context, m_document), "Root");
    pdf_obj *root = pdf_dict_gets(m_context, catalog, "StructTreeRoot");
    m_isTagged = pdf_is_dict(m_context, root) != 0;
    if (!m_isTagged) {
        return;
    }
    readParentTree(pdf_dict_gets(m_context, root, "ParentTree"), 0);
    const int number = pdf_to_num(m_context, root);
    m_visited.insert(number);
    m_waiting << Node{root, number, 0, {}};
    while (!m_waiting.isEmpty()) {
        visit(m_waiting.takeLast());
    }
    checkParentTree();
}

void TagReader::readPages()
{
    const int count = pdf_count_pages(m_context, m_document);
    for (int i = 0; i < count; ++i) {
        pdf_obj *page = pdf_lookup_page_obj(m_context, m_document, i);
        m_pages << page;
        m_pageNumbers[pdf_to_num(m_context, page)] << i + 1;
    }
}

void TagReader::readParentTree(pdf_obj *node, int depth)
{
    pdf_obj *numbers = pdf_dict_gets(m_context, node, "Nums");
    for (int i = 0; i + 1 < pdf_array_len(m_context, numbers); i += 2) {
        m_parents[pdf_to_int(m_context, pdf_array_get(m_context, numbers, i))] =
            pdf_array_get(m_context, numbers, i + 1);
    }
    pdf_obj *kids = pdf_dict_gets(m_context, node, "Kids");
    for (int i = 0; depth < deepest && i < pdf_array_len(m_context, kids); ++i) {
        readParentTree(pdf_array_get(m_context, kids, i), depth + 1);
    }
}

QByteArray TagReader::stepOf(pdf_obj *element)
{
    QByteArray step = pdf_to_name(m_context, pdf_dict_gets(m_context, element, "S"));
    for (const char *key : {"T", "Alt"}) {
        pdf_obj *text = pdf_dict_gets(m_context, element, key);
        if (pdf_is_string(m_context, text) != 0) {
            step += '(' + QByteArray(pdf_to_text_string(m_context, text)) + ')';
        }
    }
    return step;
}

void TagReader::visit(const Node &node)
{
    visitKid(node, pdf_dict_gets(m_context, node.element, "K"), 0);
}

int TagReader::pageOf(pdf_obj *reference, int inherited)
{
    pdf_obj *page = pdf_dict_gets(m_context, reference, "Pg");
    return page == nullptr ? inherited : pdf_to_num(m_context, page);
}

void TagReader::visitKid(const Node &node, pdf_obj *kid, int depth)
{
    if (pdf_is_array(m_context, kid) != 0) {
        // Backwards, because what waits is taken from the end.
        for (int i = pdf_array_len(m_context, kid) - 1; depth < deepest && i >= 0; --i) {
            visitKid(node, pdf_array_get(m_context, kid, i), depth + 1);
        }
    } else if (pdf_is_int(m_context, kid) != 0) {
        visitMark(node, nullptr, pdf_to_int(m_context, kid));
    } else if (pdf_dict_gets(m_context, kid, "Obj") != nullptr) {
        visitObject(node, kid);
    } else if (pdf_dict_gets(m_context, kid, "MCID") != nullptr) {
        visitMark(node, kid, pdf_dict_get_int(m_context, kid, PDF_NAME(MCID)));
    } else if (pdf_dict_gets(m_context, kid, "S") != nullptr) {
        const int number = pdf_to_num(m_context, kid);
        if (number != 0 && !m_visited.insert(number).second) {
            fault(QStringLiteral("element %1 is listed twice").arg(number));
            return;
        }
        if (pdf_to_num(m_context, pdf_dict_gets(m_context, kid, "P")) != node.number) {
            fault(QStringLiteral("element %1 has another parent").arg(number));
        }
        m_waiting << Node{kid, number, pageOf(kid, 0), node.path + '/' + stepOf(kid)};
    }
}

/// Number of the element that the parent tree names for a mark of a page or form, or, with a @p
/// mark below 0, for an annotation or picture; 0 when it names none.
int TagReader::elementFor(pdf_obj *owner, const char *key, int mark)
{
    pdf_obj *value = pdf_dict_gets(m_context, owner, key);
    const int place = pdf_is_int(m_context, value) != 0 ? pdf_to_int(m_context, value) : -1;
    const auto found = m_parents.find(place);
    if (found == m_parents.end()) {
        return 0;
    }
    m_confirmed.insert({place, mark});
    return pdf_to_num(m_context,
                      mark < 0 ? found->second : pdf_array_get(m_context, found->second, mark));
}

void TagReader::visitMark(const Node &node, pdf_obj *reference, int mark)
{
    const int number = pageOf(reference, node.page);
    const auto pages = m_pageNumbers.find(number);
    if (pages == m_pageNumbers.end()) {
        fault(QStringLiteral("mark %1 of element %2 is on no page").arg(mark).arg(node.number));
        return;
    }
    pdf_obj *form = pdf_dict_gets(m_context, reference, "Stm");
    pdf_obj *owner = form == nullptr ? m_pages.at(pages->second.first() - 1) : form;
    if (node.number != 0 && elementFor(owner, "StructParents", mark) != node.number) {
        fault(QStringLiteral("the parent tree differs on mark %1 of page %2")
                  .arg(mark)
                  .arg(pages->second.first()));
    }
    constexpr int furtherMarks = 1'000'000; // forms number their marks on their own
    for (const int page : pages->second) {
        QMap<int, QByteArray> &marks = m_marks[page];
        int key = mark;
        while (form != nullptr && (key == mark || marks.contains(key))) {
            key += furtherMarks;
        }
        marks[key] = node.path;
    }
}

void TagReader::visitObject(const Node &node, pdf_obj *reference)
{
    pdf_obj *object = pdf_dict_gets(m_context, reference, "Obj");
    const auto pages = m_pageNumbers.find(pageOf(reference, node.page));
    if (node.number != 0 && elementFor(object, "StructParent", -1) != node.number) {
        fault(QStringLiteral("the parent tree differs on object %1")
                  .arg(pdf_to_num(m_context, object)));
    }
    if (pages == m_pageNumbers.end()) {
        return;
    }
    for (const int page : pages->second) {
        pdf_obj *annotations = pdf_dict_gets(m_context, m_pages.at(page - 1), "Annots");
        for (int i = 0; i < pdf_array_len(m_context, annotations); ++i) {
            pdf_obj *annotation = pdf_array_get(m_context, annotations, i);
            if (pdf_to_num(m_context, annotation) == pdf_to_num(m_context, object)) {
                m_marks[page][-1 - i] = node.path;
            }
        }
    }
}

/// Whether the parent tree names nothing that no list of kids confirms.
void TagReader::checkParentTree()
{
    for (const auto &[key, value] : m_parents) {
        const bool isList = pdf_is_array(m_context, value) != 0;
        for (int mark = isList ? 0 : -1; mark < (isList ? pdf_array_len(m_context, value) : 0);
             ++mark) {
            pdf_obj *element = isList ? pdf_array_get(m_context, value, mark) : value;
            if (pdf_is_dict(m_context, element) != 0 && m_confirmed.count({key, mark}) == 0) {
                fault(QStringLiteral("no element has mark %1 of key %2").arg(mark).arg(key));
            }
        }
    }
}
