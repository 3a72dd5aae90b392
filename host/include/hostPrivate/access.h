#pragma once

namespace host::api {

/// The way from the API's classes to what they stand for in the host. No part of the API: a plug-in never
/// names it.
struct Access;

}  // namespace host::api
