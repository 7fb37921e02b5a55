#include "NamedOperation.h"

namespace {
struct Area {
    const char* name;
    HeapOperations (*operations)();
    bool isSilent = false;   // no row says yet how a run that failed tells of it
};

constexpr Area kAreas[] = {
    {"frame", FrameOperations},
    {"lists", ListOperations},
    {"units", UnitOperations},
    {"unitsById", ProceduralUnitOperations},
    {"parser", ParserOperations},
    {"smartValues", SmartValueOperations},
    {"papers", PaperOperations},
    {"language", LanguageOperations},
    {"environment", EnvironmentOperations},
    {"registry", RegistryOperations, true},
    {"files", FileOperations},
    {"containers", ContainerOperations},
    {"workspaces", WorkspaceOperations, true},
    {"managers", ManagerOperations, true},
    {"tracking", TrackingOperations},
    {"progress", ProgressOperations},
    {"exif", ExifOperations},
    {"duplication", DuplicationOperations},
};
}   // namespace

std::vector<NamedOperation> NamedOperation::All()
{
    std::vector<NamedOperation> all;
    for (const Area& area : kAreas)
        for (HeapOperation& operation : area.operations()) {
            operation.isSilent = operation.isSilent || area.isSilent;
            all.push_back({std::string(area.name) + "_" + operation.name, std::move(operation)});
        }
    return all;
}
