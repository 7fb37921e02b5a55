// The registry's database, which several processes share: one of this process's own, in a folder that goes at its end.
#pragma once

/// A key with the value "text" in the system's registry, removed at the end.
class SystemRegistryWorld {
public:
    static constexpr const wchar_t* kKey = L"HKEY_CURRENT_USER\\SOFTWARE\\Tovel\\Faults";
    static constexpr const wchar_t* kOld = L"the value that was there before";

    SystemRegistryWorld();
    ~SystemRegistryWorld();
    SystemRegistryWorld(const SystemRegistryWorld&) = delete;
    SystemRegistryWorld& operator=(const SystemRegistryWorld&) = delete;

    /// Chooses the database, before anything has asked for the system's registry; the first world does it by itself.
    static void Enter();
    /// Whether other processes can write: a transaction that was left open locks them out.
    static bool IsFreeForOthers();
};
