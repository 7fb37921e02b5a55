#include "NamedOperation.h"

namespace {
struct Area {
    const char* name;
    HeapOperations (*operations)();
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
    {"registry", RegistryOperations},
    {"files", FileOperations},
    {"containers", ContainerOperations},
    {"workspaces", WorkspaceOperations},
    {"managers", ManagerOperations},
    {"tracking", TrackingOperations},
    {"progress", ProgressOperations},
    {"exif", ExifOperations},
    {"duplication", DuplicationOperations},
    {"systemRegistry", SystemRegistryOperations},
    {"xml", XmlOperations},
};
}   // namespace

std::vector<NamedOperation> NamedOperation::All()
{
    std::vector<NamedOperation> all;
    for (const Area& area : kAreas)
        for (const HeapOperation& operation : area.operations())
            all.push_back({std::string(area.name) + "_" + operation.name, operation});
    return all;
}
