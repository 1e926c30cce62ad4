// The test loader's own export: where its entry point sends each request.
#pragma once

#include "browser/webview2/webview2_interfaces.h"

// Plain C convention: the loader's names go undecorated on 32-bit (see
// CMakeLists.txt), and a __stdcall import would ask for a decorated one.
extern "C" __declspec(dllimport) void
QrlRouteEnvironmentRequests(qrl::webview2::CreateEnvironmentWithOptionsFn to);
