#include "binding/conversion.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace py = pybind11;

namespace delven::python {

namespace {

using host::mel::ArgumentType;
using host::mel::Flag;
using host::mel::Syntax;
using host::mel::TypedArguments;
using host::mel::Value;

/// Lists of lists are flattened. A list that contains itself has no end.
constexpr int kDeepest = 100;

bool isSequence(py::handle object) {
    return PyList_Check(object.ptr()) != 0 || PyTuple_Check(object.ptr()) != 0;
}

bool isFloat(py::handle object) {
    if (PyFloat_Check(object.ptr()) != 0) return true;
    // numpy's numbers of single precision are no subclass of Python's.
    return PyIndex_Check(object.ptr()) == 0 && PyObject_HasAttrString(object.ptr(), "dtype") != 0 &&
           PyObject_HasAttrString(object.ptr(), "__float__") != 0;
}

bool isWhole(py::handle object) {
    return PyIndex_Check(object.ptr()) != 0;
}

/// numpy's bool is no subclass of Python's.
bool isTruth(py::handle object) {
    return PyBool_Check(object.ptr()) != 0 ||
           std::string_view(Py_TYPE(object.ptr())->tp_name) == "numpy.bool_";
}

int intOf(py::handle object) {
    const auto index = py::reinterpret_steal<py::object>(PyNumber_Index(object.ptr()));
    if (!index) throw py::error_already_set();
    int overflow = 0;
    const long long value = PyLong_AsLongLongAndOverflow(index.ptr(), &overflow);
    if (value == -1 && overflow == 0 && PyErr_Occurred() != nullptr) throw py::error_already_set();
    if (overflow != 0 || value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max()) {
        PyErr_SetString(PyExc_OverflowError, "Python int too large to convert to a 32-bit int");
        throw py::error_already_set();
    }
    return static_cast<int>(value);
}

double floatOf(py::handle object) {
    const double value = PyFloat_AsDouble(object.ptr());
    if (value == -1.0 && PyErr_Occurred() != nullptr) throw py::error_already_set();
    return value;
}

const char* expectedName(ArgumentType type) {
    switch (type) {
        case ArgumentType::Boolean:
            return "bool";
        case ArgumentType::Int:
            return "int";
        case ArgumentType::Unsigned:
            return "unsigned int";
        case ArgumentType::Double:
            return "float";
        case ArgumentType::Distance:
            return "distance";
        case ArgumentType::Angle:
            return "angle";
        case ArgumentType::Time:
            return "time";
        case ArgumentType::String:
            break;
    }
    return "string";
}

std::string listed(const std::vector<std::string>& names) {
    std::string text = "( ";
    for (const std::string& name : names)
        text += (text.size() > 2 ? ", " : "") + name;
    return text + " )";
}

std::string expectedText(const Flag& flag) {
    if (flag.arguments.empty()) return "bool";
    if (flag.arguments.size() == 1) return expectedName(flag.arguments.front());
    std::vector<std::string> names;
    for (const ArgumentType type : flag.arguments)
        names.emplace_back(expectedName(type));
    return listed(names);
}

std::string gotText(py::handle object) {
    if (!isSequence(object)) return Py_TYPE(object.ptr())->tp_name;
    std::vector<std::string> names;
    for (const py::handle entry : object)
        names.emplace_back(Py_TYPE(entry.ptr())->tp_name);
    return listed(names);
}

[[noreturn]] void raiseKind(const std::string& name, const Flag& flag, py::handle got) {
    throw py::type_error("Invalid arguments for flag '" + name + "'.  Expected " + expectedText(flag) +
                         ", got " + gotText(got));
}

bool isReal(ArgumentType type) {
    return type == ArgumentType::Double || type == ArgumentType::Distance || type == ArgumentType::Angle ||
           type == ArgumentType::Time;
}

/// A text may be a number where it may have a unit. The command reads it: it knows how long a frame is.
std::optional<Value> textValueOf(py::handle object, ArgumentType type) {
    Value word = Value::plainText(textOf(object));
    if (type == ArgumentType::String) return word;
    constexpr double kAnyRate = 1.0;
    const bool isMeasure =
        isReal(type) && type != ArgumentType::Double && host::mel::numberOf(word, type, kAnyRate);
    return isMeasure ? std::optional<Value>(std::move(word)) : std::nullopt;
}

/// Nothing if the object is of another kind.
std::optional<Value> valueOf(py::handle object, ArgumentType type) {
    if (PyUnicode_Check(object.ptr()) != 0) return textValueOf(object, type);
    if (type == ArgumentType::String) return std::nullopt;
    if (isTruth(object)) {
        const bool truth = PyObject_IsTrue(object.ptr()) == 1;
        return isReal(type) ? Value(truth ? 1.0 : 0.0) : Value(truth);
    }
    if (isReal(type) && (isWhole(object) || isFloat(object))) return Value(floatOf(object));
    if (type == ArgumentType::Boolean && isFloat(object)) return Value(floatOf(object) != 0.0);
    if (!isWhole(object)) return std::nullopt;
    const int number = intOf(object);
    if (type == ArgumentType::Unsigned && number < 0) return std::nullopt;
    return type == ArgumentType::Boolean ? Value(number != 0) : Value(number);
}

/// Turns the keyword arguments of one call into flags.
class FlagReader {
  public:
    FlagReader(const host::mel::CommandRegistry& commands, const std::string& command, TypedArguments& result)
        : commands_(commands), command_(command), syntax_(commands.syntax(command)), result_(result) {}

    void readModes(const py::kwargs& flags) {
        for (const auto& [key, value] : flags) {
            const std::string name = textOf(key);
            if (isDeclared(name) || syntax_ == nullptr) continue;
            if (syntax_->hasQuery() && (name == "q" || name == "query")) result_.isQuery = isTrue(value);
            if (syntax_->hasEdit() && (name == "e" || name == "edit")) result_.isEdit = isTrue(value);
        }
    }

    void read(const std::string& name, py::handle value) {
        if (syntax_ == nullptr) return addPlain(name, value);
        if (isMode(name)) return;
        const int index = syntax_->find(name);
        if (index < 0) raiseUnknown(name);
        const Flag& flag = syntax_->flags()[static_cast<std::size_t>(index)];
        if (result_.isQuery && !(flag.queryWithArguments && !isTruth(value))) {
            if (isTrue(value)) result_.flags.push_back({name, {}});
        } else if (flag.arguments.empty()) {
            addSwitch(name, flag, value);
        } else if (flag.multiUse && isManyUses(flag, value)) {
            for (const py::handle use : value)
                addUse(name, flag, use);
        } else {
            addUse(name, flag, value);
        }
    }

  private:
    [[noreturn]] void raiseUnknown(const std::string& name) const {
        if (commands_.isUncovered(command_, name))
            throw py::type_error("Flag '" + name + "' is not covered by this host.");
        throw py::type_error("Invalid flag '" + name + "'");
    }

    bool isDeclared(const std::string& name) const { return syntax_ != nullptr && syntax_->find(name) >= 0; }

    bool isMode(const std::string& name) const {
        if (isDeclared(name)) return false;
        return (syntax_->hasQuery() && (name == "q" || name == "query")) ||
               (syntax_->hasEdit() && (name == "e" || name == "edit"));
    }

    static bool isTrue(py::handle value) {
        const int truth = PyObject_IsTrue(value.ptr());
        if (truth < 0) throw py::error_already_set();
        return truth == 1;
    }

    void addSwitch(const std::string& name, const Flag& flag, py::handle value) {
        if (!isTruth(value) && !isWhole(value) && !isFloat(value)) raiseKind(name, flag, value);
        // A switch of a multi-use flag may stand there several times in MEL. Once says the same.
        if (isTrue(value)) result_.flags.push_back({name, {}});
    }

    /// A flag without a syntax has one value, or a list of them.
    void addPlain(const std::string& name, py::handle value) {
        if (isTruth(value)) {
            if (isTrue(value)) result_.flags.push_back({name, {}});
            return;
        }
        TypedArguments::Flag& flag = result_.flags.emplace_back(TypedArguments::Flag{name, {}});
        appendObjects(flag.values, value, 0);
    }

    /// Whether a value is a list of uses: of values for a flag with one argument, of tuples otherwise.
    static bool isManyUses(const Flag& flag, py::handle value) {
        if (!isSequence(value)) return false;
        if (flag.arguments.size() == 1) return true;
        for (const py::handle entry : value) {
            if (!isSequence(entry)) return false;
        }
        return true;
    }

    void addUse(const std::string& name, const Flag& flag, py::handle value) {
        TypedArguments::Flag use{name, {}};
        const std::size_t count = flag.arguments.size();
        if (!isSequence(value)) {
            if (count != 1) raiseKind(name, flag, value);
            add(use, name, flag, value, value, 0);
        } else {
            if (static_cast<std::size_t>(PySequence_Size(value.ptr())) != count) raiseKind(name, flag, value);
            std::size_t at = 0;
            for (const py::handle entry : value)
                add(use, name, flag, value, entry, at++);
        }
        result_.flags.push_back(std::move(use));
    }

    static void add(TypedArguments::Flag& use, const std::string& name, const Flag& flag, py::handle whole,
                    py::handle entry, std::size_t at) {
        std::optional<Value> value = valueOf(entry, flag.arguments[at]);
        if (!value) raiseKind(name, flag, whole);
        use.values.push_back(std::move(*value));
    }

  public:
    static void appendObjects(std::vector<Value>& into, py::handle object, int depth) {
        if (depth > kDeepest) throw py::value_error("Lists are nested too deeply.");
        if (isTruth(object)) {
            into.emplace_back(PyObject_IsTrue(object.ptr()) == 1);
        } else if (PyUnicode_Check(object.ptr()) != 0) {
            into.push_back(Value::plainText(textOf(object)));
        } else if (isWhole(object)) {
            into.emplace_back(intOf(object));
        } else if (isFloat(object)) {
            into.emplace_back(floatOf(object));
        } else if (isSequence(object)) {
            // An empty list is not the same as no list: some commands tell them apart.
            if (PySequence_Size(object.ptr()) == 0) into.emplace_back(std::vector<std::string>());
            for (const py::handle entry : object)
                appendObjects(into, entry, depth + 1);
        } else {
            throw py::type_error("Object " + std::string(py::str(object)) + " is invalid");
        }
    }

  private:
    const host::mel::CommandRegistry& commands_;
    const std::string& command_;
    const Syntax* syntax_;
    TypedArguments& result_;
};

template <typename Entry, typename Convert>
py::list listOf(const std::vector<Entry>& entries, Convert&& convert) {
    py::list list(entries.size());
    for (std::size_t k = 0; k < entries.size(); ++k)
        PyList_SET_ITEM(list.ptr(), static_cast<Py_ssize_t>(k), convert(entries[k]).release().ptr());
    return list;
}

/// Text of the host is UTF-8. What is none, from old files, keeps its bytes.
py::object text(const std::string& bytes) {
    PyObject* const decoded =
        PyUnicode_DecodeUTF8(bytes.data(), static_cast<Py_ssize_t>(bytes.size()), "surrogateescape");
    if (decoded == nullptr) throw py::error_already_set();
    return py::reinterpret_steal<py::object>(decoded);
}

py::object vectorOf(const host::mel::Vector& v) {
    return py::make_tuple(v.x, v.y, v.z);
}

/// Cuts a list into tuples of `width` entries.
py::list tuples(const py::list& flat, int width) {
    py::list result;
    for (std::size_t at = 0; at + static_cast<std::size_t>(width) <= flat.size();
         at += static_cast<std::size_t>(width))
        result.append(py::tuple(
            flat[py::slice(static_cast<py::ssize_t>(at), static_cast<py::ssize_t>(at) + width, 1)]));
    return result;
}

}  // namespace

std::string textOf(py::handle text) {
    Py_ssize_t size = 0;
    const char* const bytes = PyUnicode_AsUTF8AndSize(text.ptr(), &size);
    if (bytes == nullptr) throw py::error_already_set();
    std::string result(bytes, static_cast<std::size_t>(size));
    if (result.find('\0') != std::string::npos) throw py::value_error("embedded null character");
    return result;
}

py::object describe(const Syntax& syntax) {
    const auto kinds = [](const std::vector<ArgumentType>& types) {
        py::list names;
        for (const ArgumentType type : types)
            names.append(expectedName(type));
        return names;
    };
    py::list flags;
    for (const Flag& flag : syntax.flags())
        flags.append(py::make_tuple(flag.shortName, flag.longName, kinds(flag.arguments), flag.multiUse));
    py::dict result;
    result["flags"] = std::move(flags);
    result["arguments"] = kinds(syntax.arguments());
    result["hasObjects"] = syntax.objectKind() != host::mel::ObjectKind::None;
    result["hasQuery"] = syntax.hasQuery();
    result["hasEdit"] = syntax.hasEdit();
    return std::move(result);
}

TypedArguments argumentsOf(const host::mel::CommandRegistry& commands, const std::string& name,
                           const py::args& positional, const py::kwargs& flags) {
    TypedArguments result;
    FlagReader reader(commands, name, result);
    if (flags && !flags.empty()) {
        reader.readModes(flags);
        for (const auto& [key, value] : flags)
            reader.read(textOf(key), value);
    }
    for (const py::handle object : positional)
        FlagReader::appendObjects(result.objects, object, 0);
    return result;
}

py::object objectOf(const Value& value) {
    switch (value.kind()) {
        case Value::Kind::None:
            return py::none();
        case Value::Kind::Int:
            if (value.isTruth()) return py::bool_(value.toBool());
            return py::int_(value.toInt());
        case Value::Kind::Float:
            return py::float_(value.toFloat());
        case Value::Kind::String:
            return text(*value.getIf<std::string>());
        case Value::Kind::Vector:
            return vectorOf(*value.getIf<host::mel::Vector>());
        case Value::Kind::Matrix: {
            const auto& matrix = *value.getIf<host::mel::Matrix>();
            return tuples(listOf(matrix.values, [](double entry) { return py::float_(entry); }),
                          matrix.columns);
        }
        case Value::Kind::IntArray:
            return listOf(*value.getIf<std::vector<int>>(), [](int entry) { return py::int_(entry); });
        case Value::Kind::FloatArray:
            return listOf(*value.getIf<std::vector<double>>(),
                          [](double entry) { return py::float_(entry); });
        case Value::Kind::StringArray:
            return listOf(*value.getIf<std::vector<std::string>>(), text);
        case Value::Kind::VectorArray:
            return listOf(*value.getIf<std::vector<host::mel::Vector>>(), vectorOf);
    }
    return py::none();
}

py::object resultOf(const host::mel::CommandResult& result) {
    if (!result.form) {
        const bool isEmpty = result.value.isArray() && result.value.size() == 0;
        return isEmpty ? py::none() : objectOf(result.value);
    }
    const host::mel::ResultForm& form = *result.form;
    const Value& value = form.instead.isNone() ? result.value : form.instead;
    if (!value.isArray()) return objectOf(value);
    if (value.size() == 0 && !form.isListWhenEmpty) return py::none();
    py::list list = objectOf(value);
    if (!form.keys.empty() && form.keys.size() == list.size()) {
        if (list.size() == 1) return list[0];
        py::dict named;
        for (std::size_t k = 0; k < form.keys.size(); ++k)
            named[py::str(form.keys[k])] = list[k];
        return std::move(named);
    }
    if (form.tupleWidth > 0) list = tuples(list, form.tupleWidth);
    if (form.isTuple) return py::tuple(list);
    return std::move(list);
}

}  // namespace delven::python
