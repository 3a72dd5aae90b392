#include "scene/addStatements.h"

#include <algorithm>
#include <utility>

#include "graph/attributeTypes.h"
#include "scene/numbersText.h"
#include "scene/words.h"
#include "text/numbers.h"

namespace host::scene {

namespace {

using graph::AttributeSpec;
using graph::ValueKind;

/// The flags of an addAttr statement that mean something here, by their short names.
struct AddFlags {
    std::string shortName, longName, attributeType, dataType, parent, enumNames;
    std::optional<double> minimum, maximum, initial;
    std::vector<std::string> categories;
    int childCount = 0;
    bool isProxy = false;
    bool isArray = false;
    bool isKeyable = false;
    bool isHidden = false;
};

/// The value of a switch. Some flags stand alone: then the next word is a flag again.
bool takeSwitch(WordScanner& words, Word& word) {
    word = words.next();
    if (word.isEnd() || word.isFlag()) return true;
    const bool on = word.isOn();
    word = words.next();
    return on;
}

std::optional<double> numberOf(const Word& word) {
    const auto number = text::readNumber<double>(word.raw);
    return number.length > 0 ? std::optional(number.value) : std::nullopt;
}

AddFlags readFlags(std::string_view statement) {
    WordScanner words(statement);
    words.next();
    AddFlags flags;
    Word word = words.next();
    const auto take = [&] {
        const Word value = words.next();
        word = words.next();
        return value;
    };
    while (!word.isEnd()) {
        const auto is = [&](std::string_view shortFlag, std::string_view longFlag) {
            return word.isBare(shortFlag) || word.isBare(longFlag);
        };
        if (is("-sn", "-shortName")) {
            flags.shortName = take().text();
        } else if (is("-ln", "-longName")) {
            flags.longName = take().text();
        } else if (is("-at", "-attributeType")) {
            flags.attributeType = take().text();
        } else if (is("-dt", "-dataType")) {
            flags.dataType = take().text();
        } else if (is("-p", "-parent")) {
            flags.parent = take().text();
        } else if (is("-en", "-enumName")) {
            flags.enumNames = take().text();
        } else if (is("-min", "-minValue")) {
            flags.minimum = numberOf(take());
        } else if (is("-max", "-maxValue")) {
            flags.maximum = numberOf(take());
        } else if (is("-dv", "-defaultValue")) {
            flags.initial = numberOf(take());
        } else if (is("-nc", "-numberOfChildren")) {
            flags.childCount = static_cast<int>(numberOf(take()).value_or(0.0));
        } else if (is("-ct", "-category")) {
            flags.categories.push_back(take().text());
        } else if (is("-uap", "-usedAsProxy")) {
            flags.isProxy = takeSwitch(words, word);
        } else if (is("-m", "-multi")) {
            flags.isArray = takeSwitch(words, word);
        } else if (is("-k", "-keyable")) {
            flags.isKeyable = takeSwitch(words, word);
        } else if (is("-h", "-hidden")) {
            flags.isHidden = takeSwitch(words, word);
        } else {
            word = words.next();
        }
    }
    return flags;
}

void setRange(AttributeSpec& spec, const AddFlags& flags, const SceneUnits& units) {
    const auto inGraph = [&](double value) { return units.toGraph(spec.kind, value); };
    if (flags.minimum) spec.minimum = inGraph(*flags.minimum);
    if (flags.maximum) spec.maximum = inGraph(*flags.maximum);
    if (flags.initial) spec.defaultValue = inGraph(*flags.initial);
}

AddedAttribute* findAdded(std::vector<AddedAttribute>& added, const std::string& name) {
    const auto found = std::find_if(added.begin(), added.end(), [&](const AddedAttribute& entry) {
        return entry.spec.longName == name || entry.spec.shortName == name;
    });
    return found != added.end() ? &*found : nullptr;
}

/// The type flag of a declaration, as the host writes it.
std::string typeFlag(const graph::Attribute& attribute) {
    const AttributeSpec& spec = attribute.spec();
    switch (spec.kind) {
        case ValueKind::Bool:
            return "-at \"bool\"";
        case ValueKind::Int:
            return "-at " + inQuotes(spec.dataType.empty() ? "long" : spec.dataType);
        case ValueKind::Enum:
            return "-at \"enum\"";
        case ValueKind::Float:
            return "-at \"float\"";
        case ValueKind::Double:
            return "-at \"double\"";
        case ValueKind::Distance:
            return "-at \"doubleLinear\"";
        case ValueKind::Angle:
            return "-at \"doubleAngle\"";
        case ValueKind::Time:
            return "-at \"time\"";
        case ValueKind::Message:
            return "-at \"message\"";
        case ValueKind::Compound:
            return "-at \"compound\"";
        case ValueKind::Typed:
            break;
    }
    return "-dt " + inQuotes(spec.dataType);
}

}  // namespace

std::optional<AddedAttribute> readAddAttr(std::string_view statement, const SceneUnits& units) {
    AddFlags flags = readFlags(statement);
    if (flags.longName.empty()) flags.longName = flags.shortName;
    if (flags.shortName.empty()) flags.shortName = flags.longName;
    if (flags.longName.empty()) return std::nullopt;
    const bool isData = !flags.dataType.empty();
    const std::string type = isData                        ? flags.dataType
                             : flags.attributeType.empty() ? "double"
                                                           : flags.attributeType;
    // A tuple whose children are declared too is a compound like any other.
    const auto choice =
        isData ? graph::dataTypeNamed(type) : graph::attributeTypeNamed(type, std::max(flags.childCount, 1));
    AddedAttribute added;
    added.spec = graph::number(flags.longName, flags.shortName, choice ? choice->kind : ValueKind::Typed);
    added.spec.dataType = choice ? choice->dataType : type;
    added.spec.isArray = flags.isArray;
    added.spec.isKeyable = flags.isKeyable;
    added.spec.isHidden = flags.isHidden;
    added.spec.enumNames = graph::enumNamesIn(flags.enumNames);
    added.spec.categories = std::move(flags.categories);
    added.spec.isProxy = flags.isProxy;
    added.parent = std::move(flags.parent);
    if (choice && choice->childCount > 0) {
        added.takesChildren = !isData;
        if (isData) graph::addNumberedChildren(added.spec, *choice);
    }
    setRange(added.spec, flags, units);
    return added;
}

std::vector<AttributeSpec> assembled(std::vector<AddedAttribute> added) {
    // Children follow their parents, so from the end on every compound is complete when its turn comes.
    for (std::size_t k = added.size(); k-- > 0;) {
        if (added[k].parent.empty()) continue;
        AddedAttribute* parent = findAdded(added, added[k].parent);
        if (parent == nullptr || !parent->takesChildren || parent >= &added[k]) continue;
        auto& children = parent->spec.children;
        children.insert(children.begin(), std::move(added[k].spec));
        added[k].spec.longName.clear();
    }
    std::vector<AttributeSpec> roots;
    for (AddedAttribute& entry : added) {
        // A compound without children has no values.
        const bool isHollow = entry.takesChildren && entry.spec.children.empty();
        if (!entry.spec.longName.empty() && !isHollow) roots.push_back(std::move(entry.spec));
    }
    return roots;
}

std::string addAttrText(const graph::Attribute& attribute, const SceneUnits& units,
                        std::string_view lineEnd) {
    const AttributeSpec& spec = attribute.spec();
    std::string text = "\taddAttr -ci true";
    if (spec.isProxy) text += " -uap true";
    for (const std::string& category : spec.categories)
        text.append(" -ct ").append(inQuotes(category));
    if (spec.isHidden) text += " -h true";
    if (spec.isKeyable) text += " -k true";
    if (spec.isArray) text += " -m";
    text += " -sn " + inQuotes(spec.shortName) + " -ln " + inQuotes(spec.longName);
    const auto number = [&](const char* flag, double value) {
        text += flag;
        appendDouble(text, units.toFile(spec.kind, value));
    };
    const bool isCompound = spec.kind == ValueKind::Compound;
    if (graph::isNumber(spec.kind)) {
        if (spec.defaultValue != 0.0) number(" -dv ", spec.defaultValue);
        if (spec.minimum) number(" -min ", *spec.minimum);
        if (spec.maximum) number(" -max ", *spec.maximum);
    }
    if (!spec.enumNames.empty()) text += " -en " + inQuotes(graph::enumText(spec.enumNames));
    text += ' ' + typeFlag(attribute);
    if (attribute.parent() != nullptr) text += " -p " + inQuotes(attribute.parent()->longName());
    if (isCompound) text += " -nc " + std::to_string(attribute.children().size());
    text += ';';
    text += lineEnd;
    for (const auto& child : attribute.children())
        text += addAttrText(*child, units, lineEnd);
    return text;
}

}  // namespace host::scene
