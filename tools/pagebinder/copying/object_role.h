#pragma once

#include <cstdint>
#include <string_view>

namespace tools {

/// What a value is, by the way it was reached from a page or the catalog. The same keys mean other
/// things in other places, and in many dictionaries they are free names, so a value's own keys do
/// not tell.
enum class Role : std::uint8_t {
    unknown, ///< stands under a key that no standard defines in its place
    dropped, ///< never copied
    link,    ///< leads to pages, annotations or fields: kept where the target is copied, else null
    plain,   ///< settings: numbers, names, strings, and dictionaries, arrays and streams of them
    page,
    content, ///< a stream that is read as it is: page content, font program, colour profile
    resources,
    fontMap,
    font,
    charProcs,
    encodingMap,
    encoding,
    fontDescriptor,
    fontDescriptorMap,
    xObjectMap,
    xObject,   ///< a form or a picture
    alternate, ///< of a picture
    group,
    stateMap,
    state, ///< graphics state parameters
    softMask,
    halftone,
    functionMap,
    function,
    colorSpaceMap,
    colorSpace,
    process,
    mixingHints,
    patternMap,
    pattern,
    shadingMap,
    shading,
    propertyMap,
    layer, ///< a property list, optional content and its settings
    annotation,
    appearance,
    appearanceStates, ///< an appearance, or one for each state
    icons,
    field,
    action,
    fileSpecification,
    embeddedFiles,
    movie,
    outputIntent,
    attributes, ///< of structure elements
    structureNamespace,
    roleMap,
    cryptFilterMap,
    encryption,
};

/// What the value of @p key is in a dictionary whose role is @p parent. Elements of an array have
/// the array's role.
Role childRole(Role parent, std::string_view key);

/// What a value of that role is when it turns out to be a stream: the appearance of an annotation
/// may be one, or a dictionary of them.
Role streamRole(Role role);

} // namespace tools
