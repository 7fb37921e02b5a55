#include "Duplication.h"

namespace TvlUtl {

IDuplicatable::~IDuplicatable() = default;

IDuplicatable* Duplicatable::Duplicate(IDuplicationContext*) const { return nullptr; }
std::shared_ptr<IDuplicatable> Duplicatable::DuplicatePtr(IDuplicationContext*) const { return nullptr; }
void Duplicatable::CopyTo(IDuplicatable&, IDuplicationContext&) const { }

IDuplicationContext::IDuplicationContext() = default;
IDuplicationContext::IDuplicationContext(const IDuplicationContext&) = default;
IDuplicationContext& IDuplicationContext::operator=(const IDuplicationContext&) = default;
IDuplicationContext::~IDuplicationContext() = default;

DuplicationContext::DuplicationContext() = default;
DuplicationContext::DuplicationContext(const DuplicationContext&) = default;
DuplicationContext& DuplicationContext::operator=(const DuplicationContext&) = default;
DuplicationContext::~DuplicationContext() = default;

bool DuplicationContext::IsDeepCopy() const { return true; }

IDuplicationContext& DuplicationContext::MapInstance(const IDuplicatable* source, IDuplicatable* copy, bool detached)
{
    m_impl.MapInstance(source, copy, detached);
    return *this;
}

IDuplicationContext& DuplicationContext::MapPtrInstance(
    const IDuplicatable* source, std::shared_ptr<IDuplicatable> copy)
{
    m_impl.MapPtrInstance(source, std::move(copy));
    return *this;
}

IDuplicatable* DuplicationContext::FindMappedInstance(const IDuplicatable* source, bool detach)
{
    return m_impl.FindMappedInstance(source, detach);
}

std::shared_ptr<IDuplicatable> DuplicationContext::FindMappedPtrInstance(const IDuplicatable* source) const
{
    return m_impl.FindMappedPtrInstance(source);
}

IDuplicatable* DuplicationContext::FindOrDuplicateMappedInstance(const IDuplicatable* source, bool detach)
{
    return m_impl.FindOrDuplicateMappedInstance(source, detach, *this);
}

std::shared_ptr<IDuplicatable> DuplicationContext::FindOrDuplicateMappedPtrInstance(const IDuplicatable* source)
{
    return m_impl.FindOrDuplicateMappedPtrInstance(source, *this);
}

}   // namespace TvlUtl
