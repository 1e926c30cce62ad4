// The test loader's own export: where its entry point sends each request.
#pragma once

#include "browser/webview2/webview2_interfaces.h"

extern "C" __declspec(dllimport) void STDAPICALLTYPE
QrlRouteEnvironmentRequests(qrl::webview2::CreateEnvironmentWithOptionsFn to);
