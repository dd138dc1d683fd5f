#include "tools/pagebinder/copying/object_copier.h"

#include "tools/pagebinder/copying/content_resources.h"
#include "tools/pagebinder/structure/structure_tags.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tools {

namespace {

constexpr int deepestValue = 200;
constexpr std::size_t largeStream = std::size_t{1} << 20;

template <std::size_t Count>
bool isOneOf(const char *name, const std::array<const char *, Count> &names)
{
    return std::any_of(names.begin(), names.end(),
                       [name](const char *other) { return std::strcmp(name, other) == 0; });
}

constexpr std::array<const char *, 6> treeTypes = {"Page",     "Pages",  "Catalog",
                                                   "Template", "ObjStm", "XRef"};

constexpr std::array<const char *, 11> foreignTypes = {
    "StructTreeRoot", "StructElem", "Outlines", "Annot",    "Thread", "Bead", "MCR",
    "OBJR",           "DPart",      "Sig",      "DPartRoot"};

/// Whether readers take an object for what its place says, whatever type it gives itself.
bool isTrusted(Role role)
{
    return role != Role::unknown && role != Role::plain && role != Role::link;
}

} // namespace

const int *ObjectCopier::mappedTarget(int number) const
{
    if (m_local != nullptr) {
        const auto local = m_local->find(number);
        if (local != m_local->end()) {
            return &local->second;
        }
    }
    const auto found = m_targets.find(number);
    return found == m_targets.end() ? nullptr : &found->second;
}

int ObjectCopier::mapped(int number) const
{
    const int *const target = mappedTarget(number);
    return target == nullptr ? 0 : *target;
}

int ObjectCopier::copied(int number) const
{
    const auto found = m_copies.find(number);
    return found == m_copies.end() ? 0 : found->second.target;
}

int ObjectCopier::target(pdf_obj *object, Role role)
{
    const int number = m_source.numberOf(object);
    if (number <= 0) {
        return 0;
    }
    if (role == Role::link || role == Role::unknown) {
        const int *const target = mappedTarget(number);
        if (target != nullptr) {
            return *target;
        }
    }
    const bool isFollowed = m_followsReferences && role != Role::link;
    return isFollowed ? targetOf(number, object, role) : 0;
}

int ObjectCopier::targetOf(int number, pdf_obj *object, Role role)
{
    const auto found = m_copies.find(number);
    if (found == m_copies.end()) {
        pdf_obj *resolved = m_source.resolve(object);
        return resolved == nullptr || isForeign(resolved, number, role) ? 0 : enqueue(number, role);
    }
    Copy &copy = found->second;
    if (copy.role == Role::unknown && role != Role::unknown) {
        // Under a key that nobody defines it was copied with caution; now it is known what it is.
        if (!copy.isWritten) {
            copy.role = role;
        } else if (!m_source.isStream(number)) {
            return enqueue(number, role);
        }
    }
    return copy.target;
}

int ObjectCopier::enqueue(int number, Role role)
{
    const int target = m_writer.allocate();
    m_copies[number] = {target, role, false};
    m_queue.push_back({number, target, role});
    return target;
}

bool ObjectCopier::isForeign(pdf_obj *resolved, int number, Role role)
{
    if (!m_source.isDictionary(resolved)) {
        return false;
    }
    // A name: where keys are free, one that is spelt like this has a dictionary or a stream.
    pdf_obj *type = m_source.get(resolved, PDF_NAME(Type));
    if (pdf_is_name(m_source.context(), type)) {
        const char *const name = pdf_to_name(m_source.context(), type);
        const bool isTree = isOneOf(name, treeTypes);
        return isOneOf(name, foreignTypes) ||
               (isTree && (!isTrusted(role) || belongsToTheDocument(resolved, number)));
    }
    const bool isStray = (role == Role::xObject || role == Role::content) &&
                         (number == 0 || !m_source.isStream(number));
    return belongsToTheDocument(resolved, number) ||
           ((role == Role::unknown || isStray) && looksForeign(resolved));
}

bool ObjectCopier::belongsToTheDocument(pdf_obj *dictionary, int number)
{
    if (number == 0) {
        return false;
    }
    pdf_obj *parent = m_source.raw(dictionary, PDF_NAME(Parent));
    const bool isKid = parent != nullptr && m_source.listsKid(parent, number);
    return isKid || dictionary == m_source.catalog() ||
           dictionary == m_source.get(m_source.catalog(), PDF_NAME(Pages));
}

bool ObjectCopier::looksForeign(pdf_obj *dictionary)
{
    const auto has = [this, dictionary](pdf_obj *key) {
        return m_source.raw(dictionary, key) != nullptr;
    };
    if (has(PDF_NAME(Length))) {
        return false;
    }
    const bool node = has(PDF_NAME(Kids)) || has(PDF_NAME(Parent)) || has(PDF_NAME(Pages));
    const bool annotation = has(PDF_NAME(Subtype)) && has(PDF_NAME(Rect));
    const bool bookmark = has(PDF_NAME(Title)) && (has(PDF_NAME(Next)) || has(PDF_NAME(Prev)));
    const bool structure = has(PDF_NAME(S)) && has(PDF_NAME(P)) && has(PDF_NAME(K));
    const bool signature = has(PDF_NAME(ByteRange));
    return node || annotation || bookmark || structure || signature || has(PDF_NAME(FT));
}

bool ObjectCopier::writeScalar(pdf_obj *value)
{
    fz_context *context = m_source.context();
    if (pdf_is_name(context, value)) {
        m_writer.appendName(pdf_to_name(context, value));
    } else if (pdf_is_int(context, value)) {
        m_writer.appendNumber(pdf_to_int64(context, value));
    } else if (pdf_is_real(context, value)) {
        m_writer.appendReal(pdf_to_real(context, value));
    } else if (pdf_is_string(context, value)) {
        std::size_t length = 0;
        const char *bytes = pdf_to_string(context, value, &length);
        m_writer.appendString({bytes, length});
    } else if (pdf_is_bool(context, value)) {
        m_writer.appendBoolean(pdf_to_bool(context, value) != 0);
    } else {
        return false;
    }
    return true;
}

void ObjectCopier::write(pdf_obj *value, Role role, int depth)
{
    fz_context *context = m_source.context();
    if (pdf_is_indirect(context, value)) {
        m_writer.appendReference(target(value, role));
        return;
    }
    if (writeScalar(value)) {
        return;
    }
    const bool isCopied = depth < deepestValue && !isForeign(value, 0, role);
    if (isCopied && m_source.isArray(value)) {
        writeArray(value, role, depth);
    } else if (isCopied && m_source.isDictionary(value)) {
        writeDictionary(value, role, depth);
    } else {
        m_writer.appendNull();
    }
}

void ObjectCopier::writeArray(pdf_obj *array, Role role, int depth)
{
    fz_context *context = m_source.context();
    const int length = pdf_array_len(context, array);
    m_writer.beginArray();
    for (int i = 0; i < length; ++i) {
        if (i != 0) {
            m_writer.appendBlank();
        }
        write(pdf_array_get(context, array, i), role, depth + 1);
    }
    m_writer.endArray();
}

void ObjectCopier::writeDictionary(pdf_obj *dictionary, Role role, int depth)
{
    m_writer.beginDictionary();
    writeEntries(dictionary, role, nullptr, depth);
    if (role == Role::font && m_resources != nullptr) {
        m_resources->writeForFont(dictionary);
    }
    m_writer.endDictionary();
}

void ObjectCopier::writeEntries(pdf_obj *dictionary, Role role, KeyFilter filter, int depth)
{
    fz_context *context = m_source.context();
    const int length = pdf_dict_len(context, dictionary);
    for (int i = 0; i < length; ++i) {
        const std::string_view key = pdf_to_name(context, pdf_dict_get_key(context, dictionary, i));
        if (filter != nullptr && !filter(key)) {
            continue;
        }
        const Role child = childRole(role, key);
        if (child != Role::dropped) {
            writeEntry(key, pdf_dict_get_val(context, dictionary, i), child, depth + 1);
        }
    }
}

void ObjectCopier::writePlainEntries(pdf_obj *dictionary, KeyFilter filter)
{
    fz_context *context = m_source.context();
    const int length = pdf_dict_len(context, dictionary);
    m_followsReferences = false;
    for (int i = 0; i < length; ++i) {
        const std::string_view key = pdf_to_name(context, pdf_dict_get_key(context, dictionary, i));
        pdf_obj *value = pdf_dict_get_val(context, dictionary, i);
        const int number = m_source.numberOf(value);
        if (filter(key) && childRole(Role::plain, key) != Role::dropped &&
            (number == 0 || !m_source.isStream(number))) {
            writeEntry(key, m_source.resolve(value), Role::plain, 1);
        }
    }
    m_followsReferences = true;
}

void ObjectCopier::writeEntry(std::string_view key, pdf_obj *value, Role role, int depth)
{
    fz_context *context = m_source.context();
    if (pdf_is_indirect(context, value)) {
        const int number = target(value, role);
        if (number != 0) {
            m_writer.key(key).appendReference(number);
        }
        return;
    }
    if (pdf_is_null(context, value) || isForeign(value, 0, role)) {
        return;
    }
    m_writer.key(key);
    if (!pdf_is_name(context, value)) {
        m_writer.appendBlank();
    }
    write(value, role, depth);
}

void ObjectCopier::copyQueued()
{
    while (!m_queue.empty()) {
        // Objects are written in the order they were met, so the queue is worked off in rounds.
        std::vector<Queued> round;
        round.swap(m_queue);
        for (const Queued &queued : round) {
            copyObject(queued);
        }
    }
    for (const AddedStream &stream : m_added) {
        writeAddedStream(stream);
    }
    m_added.clear();
}

void ObjectCopier::copyObject(Queued queued)
{
    const auto copy = m_copies.find(queued.number);
    if (copy != m_copies.end() && copy->second.target == queued.target) {
        queued.role = copy->second.role;
        copy->second.isWritten = true;
    }
    pdf_obj *object = m_source.load(queued.number);
    if (m_source.isDictionary(object) && m_source.isStream(queued.number)) {
        queued.role = streamRole(queued.role);
        copyStream(queued, object);
        return;
    }
    m_writer.beginObject(queued.target);
    if (m_source.isDictionary(object)) {
        writeDictionary(object, queued.role, 0);
    } else {
        write(object, queued.role);
    }
    m_writer.endObject();
}

bool ObjectCopier::hasCryptFilter(pdf_obj *dictionary)
{
    pdf_obj *filter = m_source.get(dictionary, PDF_NAME(Filter));
    const int length = pdf_array_len(m_source.context(), filter);
    bool crypt = m_source.isName(filter, PDF_NAME(Crypt));
    for (int i = 0; i < length; ++i) {
        crypt = crypt || m_source.isName(m_source.at(filter, i), PDF_NAME(Crypt));
    }
    return crypt;
}

void ObjectCopier::copyStream(const Queued &queued, pdf_obj *dictionary)
{
    // A stream with an encryption of its own leaves it behind together with its other filters.
    const bool decoded = hasCryptFilter(dictionary);
    m_writer.beginDictionaryObject(queued.target);
    writeStreamEntries(queued, dictionary, decoded);
    if (m_resources != nullptr && m_source.raw(dictionary, PDF_NAME(Resources)) != nullptr) {
        m_resources->writeForStream(dictionary, queued.number);
    }
    if (m_tags != nullptr) {
        m_tags->writeStreamKey(dictionary, queued.number, queued.target);
    }
    const bool metadata =
        m_plainMetadata &&
        m_source.isName(m_source.get(dictionary, PDF_NAME(Type)), PDF_NAME(Metadata));
    writeData(queued, decoded, metadata);
}

void ObjectCopier::writeStreamEntries(const Queued &queued, pdf_obj *dictionary, bool decoded)
{
    const KeyFilter kept = [](std::string_view key) { return key != "Length"; };
    const KeyFilter keptDecoded = [](std::string_view key) {
        return key != "Length" && key != "Filter" && key != "DecodeParms";
    };
    writeEntries(dictionary, queued.role, decoded ? keptDecoded : kept);
}

void ObjectCopier::writeData(const Queued &queued, bool decoded, bool plain)
{
    const bool encrypting = m_writer.isEncrypting() && !plain;
    std::string start;
    std::uint64_t length = 0;
    int lengthObject = 0;
    m_source.readStream(queued.number, decoded, [&](const unsigned char *data, std::size_t size) {
        length += size;
        if (lengthObject != 0) {
            m_writer.appendBytes({reinterpret_cast<const char *>(data), size});
            m_writer.flushIfLarge();
            return true;
        }
        start.append(reinterpret_cast<const char *>(data), size);
        if (start.size() > largeStream && !encrypting) {
            // What is long passes through in pieces; its length is written behind it.
            lengthObject = m_writer.allocate();
            m_writer.key("Length").appendReference(lengthObject).beginStream().appendBytes(start);
        }
        return true;
    });
    if (lengthObject == 0) {
        if (encrypting) {
            start = m_writer.encrypted(queued.target, start);
        }
        m_writer.key("Length").appendNumber(static_cast<std::int64_t>(start.size()));
        m_writer.beginStream().appendBytes(start);
    }
    m_writer.endStream();
    if (lengthObject != 0) {
        m_writer.beginObject(lengthObject);
        m_writer.appendNumber(static_cast<std::int64_t>(length));
        m_writer.endObject();
    }
}

int ObjectCopier::addStream(std::string data, std::string_view type, std::string_view subtype)
{
    const int number = m_writer.allocate();
    m_added.push_back({number, std::move(data), type, subtype});
    return number;
}

void ObjectCopier::writeAddedStream(const AddedStream &stream)
{
    const bool isReadable = m_plainMetadata && stream.type == "Metadata";
    const bool encrypting = m_writer.isEncrypting() && !isReadable;
    const std::string data =
        encrypting ? m_writer.encrypted(stream.target, stream.data) : stream.data;
    m_writer.beginDictionaryObject(stream.target, stream.type);
    if (!stream.subtype.empty()) {
        m_writer.key("Subtype").appendName(stream.subtype);
    }
    m_writer.key("Length").appendNumber(static_cast<std::int64_t>(data.size()));
    m_writer.beginStream().appendBytes(data).endStream();
}

} // namespace tools
