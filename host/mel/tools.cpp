#include "mel/tools.h"

#include <iterator>
#include <utility>

namespace host::mel {

namespace {

class SelectTool final : public Tool {
  public:
    std::string className() const override { return "selectContext"; }
    std::string title() const override { return "Select Tool"; }
    bool takesMouse() const override { return false; }
    bool handle(const MouseEvent&) override { return false; }
};

}  // namespace

ToolBox::ToolBox() : currentName_(kSelectTool), current_(std::make_shared<SelectTool>()) {
    tools_[currentName_] = {"selectContext", current_};
}

bool ToolBox::add(const std::string& name, const std::string& command, std::shared_ptr<Tool> tool) {
    return tools_.try_emplace(name, Entry{command, std::move(tool)}).second;
}

void ToolBox::removeMadeBy(const std::string& command) {
    if (find(currentName_, command) != nullptr) setCurrent(kSelectTool);
    for (auto entry = tools_.begin(); entry != tools_.end();) {
        entry = entry->second.command == command ? tools_.erase(entry) : std::next(entry);
    }
}

std::shared_ptr<Tool> ToolBox::find(const std::string& name) const {
    const auto found = tools_.find(name);
    return found != tools_.end() ? found->second.tool : nullptr;
}

std::shared_ptr<Tool> ToolBox::find(const std::string& name, const std::string& command) const {
    const auto found = tools_.find(name);
    return found != tools_.end() && found->second.command == command ? found->second.tool : nullptr;
}

std::string ToolBox::freeName(const std::string& text) const {
    int number = 1;
    while (tools_.count(text + std::to_string(number)) > 0)
        ++number;
    return text + std::to_string(number);
}

bool ToolBox::setCurrent(const std::string& name) {
    const std::shared_ptr<Tool> next = find(name);
    if (next == nullptr) return false;
    if (next == current_) return true;
    // Name and tool change before the calls: either call may run a script that asks for the current tool or
    // sets another one.
    const std::shared_ptr<Tool> previous = std::exchange(current_, next);
    currentName_ = name;
    previous->leave();
    if (current_ == next) next->enter();
    return true;
}

}  // namespace host::mel
