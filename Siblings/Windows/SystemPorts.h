// The system's own side of every port, one set of definitions for each target.
#pragma once

#include "windows/Debug.h"
#include "windows/Environment.h"
#include "windows/Internet.h"
#include "windows/Locale.h"
#include "windows/Modules.h"
#include "windows/Terminal.h"
#include "windows/UserFolders.h"
#include "windows/Windowing.h"

namespace Ports {

template <class Port>
Port& SystemPort();

template <>
Debug& SystemPort<Debug>();
template <>
Environment& SystemPort<Environment>();
template <>
Internet& SystemPort<Internet>();
template <>
Locale& SystemPort<Locale>();
template <>
Modules& SystemPort<Modules>();
template <>
Terminal& SystemPort<Terminal>();
template <>
UserFolders& SystemPort<UserFolders>();
template <>
Windowing& SystemPort<Windowing>();

}   // namespace Ports
