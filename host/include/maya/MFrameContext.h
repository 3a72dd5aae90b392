#pragma once

#include <hostPrivate/access.h>
#include <maya/MTypes.h>

OPENMAYA_MAJOR_NAMESPACE_OPEN

namespace MHWRender {

/// Tells how a frame is drawn in which a tool gives feedback. The headless host draws nothing: a tool can
/// only pass this on.
class OPENMAYARENDER_EXPORT MFrameContext {
  public:
    MFrameContext(const MFrameContext&) = delete;
    MFrameContext& operator=(const MFrameContext&) = delete;

  private:
    friend struct host::api::ToolAccess;

    MFrameContext() = default;
};

}  // namespace MHWRender

OPENMAYA_MAJOR_NAMESPACE_CLOSE
