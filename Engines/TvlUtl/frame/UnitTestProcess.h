// Whether the library runs under a unit test host.
#pragma once

/// True when the module "UnitTestMarker.dll" is loaded in the process. Asked once; never loads it.
bool IsUnitTestProcess();
