#include "tools/pagebinder/copying/object_role.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace tools {

namespace {

struct Child
{
    std::string_view key;
    Role role;
};

/// What the entries of a dictionary are.
struct Entries
{
    const Child *known = nullptr;
    std::size_t count = 0;
    Role other = Role::unknown; ///< entries that are not known
    bool hasFreeKeys = false;   ///< keys are names that the file's author chose
};

template <std::size_t Count>
constexpr Entries entries(const std::array<Child, Count> &known, Role other = Role::unknown)
{
    return {known.data(), Count, other, false};
}

constexpr Entries freeNames(Role role)
{
    return {nullptr, 0, role, true};
}

constexpr std::array<Child, 8> inPage = {{{"Contents", Role::content},
                                          {"AF", Role::fileSpecification},
                                          {"Group", Role::group},
                                          {"Metadata", Role::content},
                                          {"OutputIntents", Role::outputIntent},
                                          {"VP", Role::plain},
                                          {"Trans", Role::plain},
                                          {"BoxColorInfo", Role::plain}}};

constexpr std::array<Child, 9> inResources = {{{"Font", Role::fontMap},
                                               {"XObject", Role::xObjectMap},
                                               {"ExtGState", Role::stateMap},
                                               {"ColorSpace", Role::colorSpaceMap},
                                               {"Pattern", Role::patternMap},
                                               {"Shading", Role::shadingMap},
                                               {"Properties", Role::propertyMap},
                                               {"Encoding", Role::encodingMap},
                                               {"ProcSet", Role::plain}}};

constexpr std::array<Child, 10> inFont = {{{"FontDescriptor", Role::fontDescriptor},
                                           {"DescendantFonts", Role::font},
                                           {"Encoding", Role::encoding},
                                           {"CharProcs", Role::charProcs},
                                           {"ToUnicode", Role::content},
                                           {"CIDSystemInfo", Role::plain},
                                           {"CIDToGIDMap", Role::content},
                                           {"Widths", Role::plain},
                                           {"W", Role::plain},
                                           {"W2", Role::plain}}};

constexpr std::array<Child, 1> inEncoding = {{{"Differences", Role::plain}}};

constexpr std::array<Child, 6> inFontDescriptor = {{{"FontFile", Role::content},
                                                    {"FontFile2", Role::content},
                                                    {"FontFile3", Role::content},
                                                    {"CIDSet", Role::content},
                                                    {"Style", Role::plain},
                                                    {"FD", Role::fontDescriptorMap}}};

constexpr std::array<Child, 10> inXObject = {{{"Group", Role::group},
                                              {"SMask", Role::xObject},
                                              {"Mask", Role::xObject},
                                              {"ColorSpace", Role::colorSpace},
                                              {"Alternates", Role::alternate},
                                              {"OC", Role::layer},
                                              {"Metadata", Role::content},
                                              {"Measure", Role::plain},
                                              {"PtData", Role::plain},
                                              {"OPI", Role::plain}}};

constexpr std::array<Child, 2> inAlternate = {{{"Image", Role::xObject}, {"OC", Role::layer}}};

constexpr std::array<Child, 1> inGroup = {{{"CS", Role::colorSpace}}};

constexpr std::array<Child, 10> inState = {{{"Font", Role::font},
                                            {"SMask", Role::softMask},
                                            {"HT", Role::halftone},
                                            {"BG", Role::function},
                                            {"BG2", Role::function},
                                            {"UCR", Role::function},
                                            {"UCR2", Role::function},
                                            {"TR", Role::function},
                                            {"TR2", Role::function},
                                            {"D", Role::plain}}};

constexpr std::array<Child, 3> inSoftMask = {
    {{"G", Role::xObject}, {"TR", Role::function}, {"BC", Role::plain}}};

/// A halftone may hold one for each colorant, by its name.
constexpr std::array<Child, 2> inHalftone = {
    {{"TransferFunction", Role::function}, {"SpotFunction", Role::function}}};

constexpr std::array<Child, 1> inFunction = {{{"Functions", Role::function}}};

/// The dictionaries within a colour space's array: parameters, attributes, functions, profiles.
constexpr std::array<Child, 6> inColorSpace = {{{"Colorants", Role::colorSpaceMap},
                                                {"Process", Role::process},
                                                {"MixingHints", Role::mixingHints},
                                                {"Alternate", Role::colorSpace},
                                                {"Functions", Role::function},
                                                {"Metadata", Role::content}}};

constexpr std::array<Child, 1> inProcess = {{{"ColorSpace", Role::colorSpace}}};

constexpr std::array<Child, 3> inMixingHints = {{{"Solidities", Role::functionMap},
                                                 {"DotGain", Role::functionMap},
                                                 {"PrintingOrder", Role::plain}}};

constexpr std::array<Child, 3> inPattern = {
    {{"Shading", Role::shading}, {"ExtGState", Role::state}, {"Metadata", Role::content}}};

constexpr std::array<Child, 2> inShading = {
    {{"ColorSpace", Role::colorSpace}, {"Function", Role::function}}};

constexpr std::array<Child, 13> inLayer = {{{"OCGs", Role::layer},
                                            {"VE", Role::layer},
                                            {"D", Role::layer},
                                            {"Configs", Role::layer},
                                            {"ON", Role::layer},
                                            {"OFF", Role::layer},
                                            {"Order", Role::layer},
                                            {"Locked", Role::layer},
                                            {"RBGroups", Role::layer},
                                            {"AS", Role::layer},
                                            {"Usage", Role::plain},
                                            {"Metadata", Role::content},
                                            {"Intent", Role::plain}}};

constexpr std::array<Child, 15> inAnnotation = {{{"AP", Role::appearance},
                                                 {"DR", Role::resources},
                                                 {"Border", Role::plain},
                                                 {"BS", Role::plain},
                                                 {"BE", Role::plain},
                                                 {"MK", Role::icons},
                                                 {"OC", Role::layer},
                                                 {"Opt", Role::plain},
                                                 {"DV", Role::plain},
                                                 {"RC", Role::content},
                                                 {"RV", Role::content},
                                                 {"FS", Role::fileSpecification},
                                                 {"Sound", Role::content},
                                                 {"Movie", Role::movie},
                                                 {"Measure", Role::plain}}};

constexpr std::array<Child, 3> inAppearance = {
    {{"N", Role::appearanceStates}, {"R", Role::appearanceStates}, {"D", Role::appearanceStates}}};

constexpr std::array<Child, 4> inIcons = {
    {{"I", Role::xObject}, {"RI", Role::xObject}, {"IX", Role::xObject}, {"IF", Role::plain}}};

constexpr std::array<Child, 3> inField = {
    {{"Opt", Role::plain}, {"DV", Role::plain}, {"RV", Role::content}}};

constexpr std::array<Child, 12> inAction = {{{"F", Role::fileSpecification},
                                             {"Win", Role::plain},
                                             {"Mac", Role::plain},
                                             {"Unix", Role::plain},
                                             {"Fields", Role::link},
                                             {"T", Role::link},
                                             {"TA", Role::link},
                                             {"AN", Role::link},
                                             {"Annotation", Role::link},
                                             {"State", Role::layer},
                                             {"Sound", Role::content},
                                             {"D", Role::link}}};

constexpr std::array<Child, 3> inFileSpecification = {
    {{"EF", Role::embeddedFiles}, {"RF", Role::embeddedFiles}, {"CI", Role::plain}}};

constexpr std::array<Child, 2> inMovie = {
    {{"F", Role::fileSpecification}, {"Poster", Role::xObject}}};

constexpr std::array<Child, 2> inOutputIntent = {
    {{"DestOutputProfile", Role::content}, {"MixingHints", Role::mixingHints}}};

constexpr std::array<Child, 1> inAttributes = {{{"NS", Role::structureNamespace}}};

constexpr std::array<Child, 2> inStructureNamespace = {
    {{"RoleMapNS", Role::roleMap}, {"Schema", Role::fileSpecification}}};

constexpr std::array<Child, 1> inEncryption = {{{"CF", Role::cryptFilterMap}}};

Entries entriesOfSettings(Role role)
{
    switch (role) {
    case Role::appearance:
        return entries(inAppearance);
    case Role::appearanceStates:
        return freeNames(Role::xObject);
    case Role::icons:
        return entries(inIcons);
    case Role::annotation:
        return entries(inAnnotation);
    case Role::field:
        return entries(inField);
    case Role::action:
        return entries(inAction);
    case Role::fileSpecification:
        return entries(inFileSpecification);
    case Role::embeddedFiles:
        return {nullptr, 0, Role::content, false};
    case Role::movie:
        return entries(inMovie);
    case Role::outputIntent:
        return entries(inOutputIntent);
    case Role::attributes:
        return entries(inAttributes);
    case Role::structureNamespace:
        return entries(inStructureNamespace);
    case Role::encryption:
        return entries(inEncryption);
    case Role::roleMap:
    case Role::cryptFilterMap:
        return freeNames(Role::plain);
    default:
        return {};
    }
}

Entries entriesOfColor(Role role)
{
    switch (role) {
    case Role::colorSpaceMap:
        return freeNames(Role::colorSpace);
    case Role::colorSpace:
        return entries(inColorSpace);
    case Role::process:
        return entries(inProcess);
    case Role::mixingHints:
        return entries(inMixingHints);
    case Role::functionMap:
        return freeNames(Role::function);
    case Role::function:
        return entries(inFunction, Role::plain);
    case Role::patternMap:
        return freeNames(Role::pattern);
    case Role::pattern:
        return entries(inPattern);
    case Role::shadingMap:
        return freeNames(Role::shading);
    case Role::shading:
        return entries(inShading);
    case Role::halftone:
        return {inHalftone.data(), inHalftone.size(), Role::halftone, true};
    default:
        return entriesOfSettings(role);
    }
}

Entries entriesOf(Role role)
{
    switch (role) {
    case Role::plain:
    case Role::link:
        return {nullptr, 0, role, false};
    case Role::page:
        return entries(inPage);
    case Role::resources:
        return entries(inResources);
    case Role::fontMap:
        return freeNames(Role::font);
    case Role::font:
        return entries(inFont);
    case Role::charProcs:
    case Role::xObjectMap:
        return freeNames(Role::xObject);
    case Role::encodingMap:
        return freeNames(Role::encoding);
    case Role::encoding:
        return entries(inEncoding);
    case Role::fontDescriptor:
        return entries(inFontDescriptor);
    case Role::fontDescriptorMap:
        return freeNames(Role::fontDescriptor);
    case Role::xObject:
        return entries(inXObject);
    case Role::alternate:
        return entries(inAlternate);
    case Role::group:
        return entries(inGroup);
    case Role::stateMap:
        return freeNames(Role::state);
    case Role::state:
        return entries(inState);
    case Role::softMask:
        return entries(inSoftMask);
    case Role::propertyMap:
        return freeNames(Role::layer);
    case Role::layer:
        return entries(inLayer);
    default:
        return entriesOfColor(role);
    }
}

/// Links into the structure tree, private data of other programs, attached files, thumbnails; and
/// resources, which are written apart, pruned.
bool isLeftBehind(std::string_view key)
{
    constexpr std::array<std::string_view, 6> keys = {"StructParent", "StructParents", "PieceInfo",
                                                      "AF",           "Thumb",         "Resources"};
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

} // namespace

Role childRole(Role parent, std::string_view key)
{
    const Entries known = entriesOf(parent);
    for (std::size_t i = 0; i < known.count; ++i) {
        if (known.known[i].key == key) {
            return known.known[i].role;
        }
    }
    if (!known.hasFreeKeys && isLeftBehind(key)) {
        return Role::dropped;
    }
    return known.other;
}

Role streamRole(Role role)
{
    return role == Role::appearanceStates ? Role::xObject : role;
}

} // namespace tools
