// The node types of plain arithmetic: multiplyDivide, plusMinusAverage, reverse, setRange, condition. All of
// them compute in double and give single precision.

#include <algorithm>
#include <cmath>

#include "nodes/plugs.h"
#include "nodes/schema.h"
#include "nodes/specs.h"

namespace host::nodes {

namespace {

using graph::AttributeSpec;
using graph::compound;
using graph::enumeration;
using graph::number;
using graph::ValueKind;

/// The inputs of a node, as one part (x, y or z; r, g or b) of an output sees them.
class Inputs {
  public:
    Inputs(graph::Graph& graph, const graph::Plug& output)
        : graph_(graph), node_(output.node()), axis_(output.attribute().ordinal()) {}

    /// A number, or the same part of a compound.
    double operator()(std::string_view name) const { return partOf(node_->plug(name)); }
    int choice(std::string_view name) const { return choiceAt(graph_, node_->plug(name)); }
    /// The same of every element of a multi.
    std::vector<double> all(std::string_view name) const {
        const graph::Plug array = node_->plug(name);
        std::vector<double> values;
        for (const int index : graph_.elements(array))
            values.push_back(partOf(array.element(index)));
        return values;
    }

  private:
    double partOf(const graph::Plug& plug) const {
        return graph_.number(plug.isCompound() ? plug.child(axis_) : plug);
    }

    graph::Graph& graph_;
    const graph::NodeRef& node_;
    int axis_;
};

/// What has no finite value is 0: a number that is none would spread through the whole rig.
double finite(double value) {
    return std::isfinite(value) ? value : 0.0;
}

double multiplyDivide(const Inputs& value) {
    enum { NoOperation, Multiply, Divide, Power };
    const double a = value("input1");
    const double b = value("input2");
    switch (value.choice("operation")) {
        case Multiply:
            return a * b;
        case Divide:
            return finite(a / b);
        case Power:
            return finite(std::pow(a, b));
        default:
            return a;
    }
}

double combined(const std::vector<double>& values, int operation) {
    enum { NoOperation, Sum, Subtract, Average };
    if (values.empty()) return 0.0;
    if (operation != Sum && operation != Subtract && operation != Average) return values.front();
    double rest = 0.0;
    for (std::size_t k = 1; k < values.size(); ++k)
        rest += values[k];
    if (operation == Subtract) return values.front() - rest;
    const double sum = values.front() + rest;
    return operation == Sum ? sum : sum / static_cast<double>(values.size());
}

double reverse(const Inputs& value) {
    return 1.0 - value("input");
}

/// A range that starts and ends at the same place is a step there.
double setRange(const Inputs& value) {
    const double from = value("oldMin");
    const double to = value("oldMax");
    const double at = value("value");
    const double low = value("min");
    const double high = value("max");
    if (from == to) return at > from ? high : low;
    return low + std::clamp((at - from) / (to - from), 0.0, 1.0) * (high - low);
}

bool holds(int operation, double a, double b) {
    enum { Equal, NotEqual, GreaterThan, GreaterOrEqual, LessThan, LessOrEqual };
    switch (operation) {
        case NotEqual:
            return a != b;
        case GreaterThan:
            return a > b;
        case GreaterOrEqual:
            return a >= b;
        case LessThan:
            return a < b;
        case LessOrEqual:
            return a <= b;
        default:
            return a == b;
    }
}

double condition(const Inputs& value) {
    const bool isTrue = holds(value.choice("operation"), value("firstTerm"), value("secondTerm"));
    return value(isTrue ? "colorIfTrue" : "colorIfFalse");
}

graph::ComputedValue single(double value) {
    return static_cast<double>(static_cast<float>(value));
}

graph::NodeBehaviour computing(double (*formula)(const Inputs&)) {
    graph::NodeBehaviour behaviour;
    behaviour.compute = [formula](graph::Graph& graph, const graph::Plug& output) {
        return single(formula(Inputs(graph, output)));
    };
    return behaviour;
}

/// The three outputs take the multi of their own width.
graph::ComputedValue computeCombined(graph::Graph& graph, const graph::Plug& output) {
    const graph::Attribute* above = output.attribute().parent();
    const std::string& name = above != nullptr ? above->longName() : output.attribute().longName();
    const Inputs value(graph, output);
    const std::vector<double> values =
        value.all(name == "output1D" ? "input1D" : (name == "output2D" ? "input2D" : "input3D"));
    return single(combined(values, value.choice("operation")));
}

AttributeSpec vector(const char* longName, const char* shortName, double value = 0.0) {
    AttributeSpec spec = graph::triple(longName, shortName, ValueKind::Float);
    for (AttributeSpec& child : spec.children) {
        child.isKeyable = true;
        child.defaultValue = value;
    }
    return spec;
}

AttributeSpec plain(const char* longName, const char* shortName) {
    return number(longName, shortName, ValueKind::Float).keyable();
}

/// <name>x, <name>y and, for a width of 3, <name>z.
AttributeSpec tuple(const std::string& longName, const std::string& shortName, int width) {
    std::vector<AttributeSpec> children;
    children.reserve(3);
    for (int axis = 0; axis < width; ++axis)
        children.push_back(
            number(longName + "xyz"[axis], shortName + "xyz"[axis], ValueKind::Float).keyable());
    return compound(longName, shortName, std::move(children));
}

}  // namespace

void addArithmeticTypes(graph::NodeTypes& types) {
    types.add(
        {"multiplyDivide",
         "node",
         {enumeration("operation", "op", {"No operation", "Multiply", "Divide", "Power"}).withDefault(1),
          vector("input1", "i1"), vector("input2", "i2", 1.0), vector("output", "o").output()},
         computing(multiplyDivide)});
    types.add({"plusMinusAverage",
               "node",
               {enumeration("operation", "op", {"No operation", "Sum", "Subtract", "Average"}).withDefault(1),
                plain("input1D", "i1").array(), tuple("input2D", "i2", 2).array(),
                tuple("input3D", "i3", 3).array(), plain("output1D", "o1").output(),
                tuple("output2D", "o2", 2).output(), tuple("output3D", "o3", 3).output()},
               {computeCombined}});
    types.add(
        {"reverse", "node", {vector("input", "i"), vector("output", "o").output()}, computing(reverse)});
    types.add({"setRange",
               "node",
               {vector("value", "v"), vector("min", "n"), vector("max", "m"), vector("oldMin", "on"),
                vector("oldMax", "om"), vector("outValue", "o").output()},
               computing(setRange)});
    types.add({"condition",
               "node",
               {enumeration(
                    "operation", "op",
                    {"Equal", "Not Equal", "Greater Than", "Greater or Equal", "Less Than", "Less or Equal"}),
                plain("firstTerm", "ft"), plain("secondTerm", "st"), keyableColor("colorIfTrue", "ct"),
                keyableColor("colorIfFalse", "cf", 1.0), keyableColor("outColor", "oc").output()},
               computing(condition)});
}

}  // namespace host::nodes
