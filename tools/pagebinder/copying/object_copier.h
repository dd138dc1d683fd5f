#pragma once

#include "tools/pagebinder/copying/object_role.h"
#include "tools/pagebinder/output/pdf_writer.h"
#include "tools/pdf/pdf_source.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace tools {

class ContentResources;
class StructureTags;

/// Which entries of a dictionary are written.
using KeyFilter = bool (*)(std::string_view key);

/// Copies objects into the new file: values are written with their references renumbered, and what
/// they refer to is put in a queue and written later. Nothing is inflated or deflated.
///
/// What an object is follows from the way it was reached, its role. References that lead out of the
/// copied pages (to other pages, the page tree, the catalog, the structure tree, fields, bookmarks
/// or annotations that nobody has mapped) become null: through them a page would drag the rest of
/// the document along.
class ObjectCopier
{
public:
    ObjectCopier(PdfSource &source, PdfWriter &writer) : m_source(source), m_writer(writer) {}

    PdfSource &source() noexcept { return m_source; }
    PdfWriter &writer() noexcept { return m_writer; }

    /// From now on a link to object @p number becomes one to @p target, or null when that is 0. A
    /// damaged file may use the same object as something else too, which is copied as that.
    void map(int number, int target) { m_targets[number] = target; }
    /// What @p number is mapped to; 0 when it is not mapped.
    int mapped(int number) const;
    /// Everything that is mapped: object numbers to numbers in the output, 0 for null.
    const std::unordered_map<int, int> &targets() const noexcept { return m_targets; }
    /// References that hold while one page's annotations are written, before all others.
    void setLocalTargets(const std::unordered_map<int, int> *targets) { m_local = targets; }

    /// The number in the new file that the reference @p object becomes; 0: null. The object behind
    /// it is copied unless it has been before.
    int target(pdf_obj *object, Role role);

    /// Writes any value; null where it cannot be taken along.
    void write(pdf_obj *value, Role role, int depth = 0);
    /// Writes a string, a name, a number or a boolean; nothing else and @returns false else.
    bool writeScalar(pdf_obj *value);
    /// Writes the entries of a dictionary, without the brackets, as far as @p filter takes them.
    /// @param role that of the dictionary
    void writeEntries(pdf_obj *dictionary, Role role, KeyFilter filter = nullptr, int depth = 0);
    /// The same for plain settings: no reference is followed but to a single value, so nothing can
    /// hang on them.
    void writePlainEntries(pdf_obj *dictionary, KeyFilter filter);
    /// Writes "/KEY value", or nothing when the value is missing or cannot be taken along.
    /// @param role that of the value
    void writeEntry(std::string_view key, pdf_obj *value, Role role, int depth = 0);

    /// Takes up a stream of one's own. @returns its number in the output; it is written with those
    /// that have been referred to
    /// @param type its /Type, "" for none; a literal, and so is @p subtype
    int addStream(std::string data, std::string_view type = {}, std::string_view subtype = {});

    /// Leaves the document's metadata readable in a file that is encrypted otherwise.
    void setPlainMetadata() noexcept { m_plainMetadata = true; }

    /// Writes the objects that have been referred to, and those that they refer to.
    void copyQueued();

    /// Whether @p resolved is something that belongs to the document or to another page.
    /// @param number that of the object, 0 for one that stands in another
    bool isForeign(pdf_obj *resolved, int number, Role role);

    /// The number in the output of object @p number if it has been referred to, else 0.
    int copied(int number) const;

    /// From now on forms and pictures name the structure elements that they belong to.
    void setStructureTags(StructureTags *tags) { m_tags = tags; }

    void setContentResources(ContentResources *resources) { m_resources = resources; }

private:
    /// What has become of an object.
    struct Copy
    {
        int target = 0; ///< number in the output, 0: none
        Role role = Role::unknown;
        bool isWritten = false;
    };

    struct Queued
    {
        int number;
        int target;
        Role role;
    };

    struct AddedStream
    {
        int target;
        std::string data;
        std::string_view type;
        std::string_view subtype;
    };

    const int *mappedTarget(int number) const;
    int targetOf(int number, pdf_obj *object, Role role);
    int enqueue(int number, Role role);
    void copyObject(Queued queued);
    void copyStream(const Queued &queued, pdf_obj *dictionary);
    void writeArray(pdf_obj *array, Role role, int depth);
    void writeDictionary(pdf_obj *dictionary, Role role, int depth);
    void writeStreamEntries(const Queued &queued, pdf_obj *dictionary, bool decoded);
    void writeData(const Queued &queued, bool decoded, bool plain);
    void writeAddedStream(const AddedStream &stream);
    bool hasCryptFilter(pdf_obj *dictionary);
    bool belongsToTheDocument(pdf_obj *dictionary, int number);
    bool looksForeign(pdf_obj *dictionary);

    PdfSource &m_source;
    PdfWriter &m_writer;
    ContentResources *m_resources = nullptr;
    StructureTags *m_tags = nullptr;
    std::unordered_map<int, int> m_targets; ///< what has been mapped
    std::unordered_map<int, Copy> m_copies;
    const std::unordered_map<int, int> *m_local = nullptr;
    std::vector<Queued> m_queue;
    std::vector<AddedStream> m_added;
    bool m_plainMetadata = false;
    bool m_followsReferences = true;
};

} // namespace tools
