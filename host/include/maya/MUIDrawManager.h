#pragma once

#include <hostPrivate/access.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

namespace MHWRender {

/// Draws the feedback of a tool. The headless host draws nothing: a tool can only pass this on.
class OPENMAYARENDER_EXPORT MUIDrawManager {
  public:
    MUIDrawManager(const MUIDrawManager&) = delete;
    MUIDrawManager& operator=(const MUIDrawManager&) = delete;

  private:
    friend struct host::api::ToolAccess;

    MUIDrawManager() = default;
    ~MUIDrawManager() = default;
};

}  // namespace MHWRender

OPENMAYA_MAJOR_NAMESPACE_CLOSE
