#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace host::mel {

/// What the mouse did in the view, in pixels from the view's lower left corner.
struct MouseEvent {
    enum class Kind { Press, Drag, Release };
    enum class Button { Left = 1, Middle = 2 };
    /// Which of the host's two viewports sends it: a tool may treat them differently.
    enum class Viewport { Viewport2, Legacy };

    Kind kind = Kind::Press;
    Button button = Button::Left;
    short x = 0;
    short y = 0;
    Viewport viewport = Viewport::Viewport2;
};

/// A tool of the view ("context" in scripts). The current tool gets the mouse events.
class Tool {
  public:
    virtual ~Tool() = default;
    Tool() = default;
    Tool(const Tool&) = delete;
    Tool& operator=(const Tool&) = delete;

    virtual std::string className() const = 0;
    virtual std::string title() const = 0;
    /// The help line that the user sees while the tool is current.
    virtual std::string help() const { return {}; }
    /// Name of the mouse cursor while the tool is current.
    virtual std::string cursor() const { return "default"; }

    /// Called when the tool becomes the current one, and when it stops being it.
    virtual void enter() {}
    virtual void leave() {}
    /// False for a tool whose mouse handling this host does not cover.
    virtual bool takesMouse() const = 0;
    /// @return false if the tool reports a failure
    virtual bool handle(const MouseEvent& event) = 0;
};

/// The existing tools by name, and the current one. A tool box starts with the select tool. That tool always
/// exists, and it is current whenever no other tool is.
class ToolBox {
  public:
    static constexpr const char* kSelectTool = "selectSuperContext";

    ToolBox();

    /// @param command  script command that made the tool
    /// @return false if the name is taken
    bool add(const std::string& name, const std::string& command, std::shared_ptr<Tool> tool);
    /// Removes all tools that a command made. If one of them is current, the select tool becomes the current
    /// one.
    void removeMadeBy(const std::string& command);
    /// Null if there is none of that name, or if another command than the given one made it.
    std::shared_ptr<Tool> find(const std::string& name) const;
    std::shared_ptr<Tool> find(const std::string& name, const std::string& command) const;
    /// The text with the first number at its end that no tool has.
    std::string freeName(const std::string& text) const;

    /// Leaves the current tool and enters another. Does nothing if it is already current.
    /// @return false if there is no tool of that name; then nothing changes
    bool setCurrent(const std::string& name);
    const std::string& currentName() const { return currentName_; }
    const std::shared_ptr<Tool>& current() const { return current_; }

  private:
    struct Entry {
        std::string command;
        std::shared_ptr<Tool> tool;
    };

    std::map<std::string, Entry> tools_;
    std::string currentName_;
    std::shared_ptr<Tool> current_;
};

}  // namespace host::mel
