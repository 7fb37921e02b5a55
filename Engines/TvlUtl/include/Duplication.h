// Copying a graph of objects that refer to each other: one copy per source object, shared and circular references intact.
#pragma once

#include "SourceMap.h"
#include "TvlUtlApi.h"

#include <memory>

namespace TvlUtl {

class IDuplicationContext;

/// An object that can copy itself.
class TVLUTL_API IDuplicatable {
public:
    /// @{
    /// There is no state here.
    IDuplicatable() = default;
    IDuplicatable(const IDuplicatable&) = default;
    IDuplicatable& operator=(const IDuplicatable&) = default;
    /// @}
    virtual ~IDuplicatable();

    /// Makes a copy and registers it with IDuplicationContext::MapInstance, before it copies what the object refers to:
    /// a reference that leads back here then finds the copy. What is not registered counts as not copied.
    virtual IDuplicatable* Duplicate(IDuplicationContext* context) const = 0;
    /// The same with IDuplicationContext::MapPtrInstance. The result counts even if it is not registered, but is not
    /// found again then.
    virtual std::shared_ptr<IDuplicatable> DuplicatePtr(IDuplicationContext* context) const = 0;
    /// Copies this object's state into `target`.
    virtual void CopyTo(IDuplicatable& target, IDuplicationContext& context) const = 0;
};

/// An object that takes no part in a copy, unless it overrides what it needs.
class TVLUTL_API Duplicatable : public IDuplicatable {
public:
    IDuplicatable* Duplicate(IDuplicationContext* context) const override;                      ///< null
    std::shared_ptr<IDuplicatable> DuplicatePtr(IDuplicationContext* context) const override;   ///< empty
    void CopyTo(IDuplicatable& target, IDuplicationContext& context) const override;            ///< does nothing
};

/// The record of what has been copied so far, passed along the whole copy. For one thread at a time.
class TVLUTL_API IDuplicationContext {
public:
    /// @{
    /// There is no state here.
    IDuplicationContext();
    IDuplicationContext(const IDuplicationContext&);
    IDuplicationContext& operator=(const IDuplicationContext&);
    /// @}

    /// Whether what an object refers to is to be copied too.
    virtual bool IsDeepCopy() const = 0;
    /// Registers the copy of `source`; a copy that is registered already stays. The context deletes the copy at its end
    /// unless it is `detached`, here or later. Throws std::bad_alloc: nothing is registered then, and the copy is the
    /// caller's. Returns this context.
    virtual IDuplicationContext& MapInstance(const IDuplicatable* source, IDuplicatable* copy, bool detached) = 0;
    /// Registers a shared copy of `source` for both ways of finding, replacing a shared copy that is registered. The
    /// context keeps a reference as long as it lives. Fails as MapInstance does. Returns this context.
    virtual IDuplicationContext& MapPtrInstance(const IDuplicatable* source, std::shared_ptr<IDuplicatable> copy) = 0;
    /// The copy of `source`, or null. With `detach` it is the caller's from now on, or whoever's it was.
    virtual IDuplicatable* FindMappedInstance(const IDuplicatable* source, bool detach) = 0;
    /// The shared copy of `source`, or empty.
    virtual std::shared_ptr<IDuplicatable> FindMappedPtrInstance(const IDuplicatable* source) const = 0;
    /// As FindMappedInstance, calling `source->Duplicate` when there is no copy yet. Null for a null source and for one
    /// that registers nothing, whatever its Duplicate returns.
    virtual IDuplicatable* FindOrDuplicateMappedInstance(const IDuplicatable* source, bool detach) = 0;
    /// As FindMappedPtrInstance; when there is no shared copy yet, what `source->DuplicatePtr` returns. Empty for a null
    /// source.
    virtual std::shared_ptr<IDuplicatable> FindOrDuplicateMappedPtrInstance(const IDuplicatable* source) = 0;

protected:
    ~IDuplicationContext();
};

/// The engine of a context, whose operations it has without the interface. Copies that were registered and not detached
/// are deleted with it, in the order of their sources' addresses. However many copies it lets go of, chains of them
/// included, it needs little stack.
class TVLUTL_API DuplicationContextImpl {
public:
    /// Nothing has been copied.
    DuplicationContextImpl();
    /// A copy is for reading: both would delete what is not detached. On failure of an assignment the target is as it
    /// was; what is taken out of it is not deleted.
    DuplicationContextImpl(const DuplicationContextImpl&);
    /// As the copy.
    DuplicationContextImpl& operator=(const DuplicationContextImpl&);
    ~DuplicationContextImpl();

    /// As IDuplicationContext::MapInstance.
    void MapInstance(const IDuplicatable* source, IDuplicatable* copy, bool detached);
    /// As IDuplicationContext::MapPtrInstance.
    void MapPtrInstance(const IDuplicatable* source, std::shared_ptr<IDuplicatable> copy);
    /// As IDuplicationContext::FindMappedInstance.
    IDuplicatable* FindMappedInstance(const IDuplicatable* source, bool detach);
    /// As IDuplicationContext::FindMappedPtrInstance.
    std::shared_ptr<IDuplicatable> FindMappedPtrInstance(const IDuplicatable* source) const;
    /// As IDuplicationContext::FindOrDuplicateMappedInstance.
    /// @param context what `source->Duplicate` is given
    IDuplicatable* FindOrDuplicateMappedInstance(
        const IDuplicatable* source, bool detach, IDuplicationContext& context);
    /// As IDuplicationContext::FindOrDuplicateMappedPtrInstance.
    /// @param context what `source->DuplicatePtr` is given
    std::shared_ptr<IDuplicatable> FindOrDuplicateMappedPtrInstance(
        const IDuplicatable* source, IDuplicationContext& context);

private:
    /// @cond
    struct InstanceEntry {
        IDuplicatable* copy;
        bool owned;   // deleted with the context
    };
    /// @endcond

    void DeleteOwnedCopies();

    SourceMap<InstanceEntry> instances;
    SourceMap<std::shared_ptr<IDuplicatable>> sharedInstances;   // whose sources all have a row in `instances` too
};

/// The standard context: deep copies, and everything else as its engine does it. Objects are given this context itself,
/// so that they see what a derived class overrides.
class TVLUTL_API DuplicationContext : public IDuplicationContext {
public:
    /// Nothing has been copied.
    DuplicationContext();
    /// @{
    /// As a copy of the engine: for reading alone.
    DuplicationContext(const DuplicationContext&);
    DuplicationContext& operator=(const DuplicationContext&);
    /// @}
    ~DuplicationContext();

    bool IsDeepCopy() const override;   ///< true
    IDuplicationContext& MapInstance(const IDuplicatable* source, IDuplicatable* copy, bool detached) override;
    IDuplicationContext& MapPtrInstance(const IDuplicatable* source, std::shared_ptr<IDuplicatable> copy) override;
    IDuplicatable* FindMappedInstance(const IDuplicatable* source, bool detach) override;
    std::shared_ptr<IDuplicatable> FindMappedPtrInstance(const IDuplicatable* source) const override;
    IDuplicatable* FindOrDuplicateMappedInstance(const IDuplicatable* source, bool detach) override;
    std::shared_ptr<IDuplicatable> FindOrDuplicateMappedPtrInstance(const IDuplicatable* source) override;

private:
    DuplicationContextImpl m_impl;
};

}   // namespace TvlUtl
