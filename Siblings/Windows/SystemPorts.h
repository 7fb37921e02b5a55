// The system's own side of every port, one set of definitions for each target.
#pragma once

#include "windows/Clock.h"
#include "windows/Debug.h"
#include "windows/Dialogs.h"
#include "windows/Environment.h"
#include "windows/Internet.h"
#include "windows/Keyboard.h"
#include "windows/Locale.h"
#include "windows/ManagedRuntimes.h"
#include "windows/Modules.h"
#include "windows/NamedObjects.h"
#include "windows/Processor.h"
#include "windows/ProfileFiles.h"
#include "windows/Shell.h"
#include "windows/Sound.h"
#include "windows/Terminal.h"
#include "windows/UserFolders.h"
#include "windows/Users.h"
#include "windows/Windowing.h"

namespace Ports {

template <class Port>
Port& SystemPort();

template <>
Clock& SystemPort<Clock>();
template <>
Debug& SystemPort<Debug>();
template <>
Dialogs& SystemPort<Dialogs>();
template <>
Environment& SystemPort<Environment>();
template <>
Internet& SystemPort<Internet>();
template <>
Keyboard& SystemPort<Keyboard>();
template <>
Locale& SystemPort<Locale>();
template <>
ManagedRuntimes& SystemPort<ManagedRuntimes>();
template <>
Modules& SystemPort<Modules>();
template <>
NamedObjects& SystemPort<NamedObjects>();
template <>
Processor& SystemPort<Processor>();
template <>
ProfileFiles& SystemPort<ProfileFiles>();
template <>
Shell& SystemPort<Shell>();
template <>
Sound& SystemPort<Sound>();
template <>
Terminal& SystemPort<Terminal>();
template <>
UserFolders& SystemPort<UserFolders>();
template <>
Users& SystemPort<Users>();
template <>
Windowing& SystemPort<Windowing>();

}   // namespace Ports
