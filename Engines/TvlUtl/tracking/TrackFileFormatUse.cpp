#include "TrackFileFormatUse.h"

#include "RecordTable.h"
#include "siblings/TvlComponent/Application.h"
#include "siblings/TvlComponent/Document.h"

#include <typeinfo>

namespace {
constexpr const wchar_t* kDisabledContext = L"__DISABLED";
/// Name of a document's page layout, a text.
constexpr GUID kLayoutKey = {0x39ce58e9, 0x11dd, 0x1843, {0xa8, 0x57, 0xec, 0xb9, 0x62, 0xd9, 0x36, 0xdf}};

TvlString ReadLayout(const ITovelCmn_Doc& document)
{
    if (!document.HasMetadata(kLayoutKey))
        return TvlString();
    const TvlUtils::Any value = document.GetMetadata(kLayoutKey);
    const TvlString* const text = value.Get<TvlString>();
    if (value.HasValue() && !text)
        throw std::bad_cast();
    return text ? *text : TvlString();
}

void FillFromDocument(TrackFileFormatUseData& data, ITovelCmn_Doc& document)
{
    data.SetDocInfo(document);
    if (TvlString layout = ReadLayout(document); !layout.IsEmpty())
        data.SetLayout(std::move(layout));
}
}   // namespace

TrackFileFormatUseDataLock::TrackFileFormatUseDataLock(std::shared_ptr<TrackFileFormatUseDataDetail> record)
    : m_record(std::move(record))
{
    if (m_record && m_record->IsGlobal())
        m_record->GetLock().Lock();
}

TrackFileFormatUseDataLock::~TrackFileFormatUseDataLock()
{
    if (m_record && m_record->IsGlobal())
        m_record->GetLock().Unlock();
}

TrackFileFormatUseData* TrackFileFormatUseDataLock::operator->() const { return m_record.get(); }

TrackFileFormatUse TrackFileFormatUse::Start(
    const TvlStringT<wchar_t>& path, const TvlStringT<wchar_t>& context, bool finished)
{
    if (path.IsEmpty() || context.IsEmpty())
        return NoTrack();
    return TrackFileFormatUse(RecordTable::Get().FindOrAdd(path, context, finished));
}

TrackFileFormatUse TrackFileFormatUse::StartGlobal(const TvlStringT<wchar_t>& path, const TvlStringT<wchar_t>& context)
{
    return Start(path, context, false);
}

TrackFileFormatUse TrackFileFormatUse::StartLocal(const TvlStringT<wchar_t>& path, const TvlStringT<wchar_t>& context)
{
    if (path.IsEmpty() || context.IsEmpty())
        return NoTrack();
    return TrackFileFormatUse(std::make_shared<TrackFileFormatUseDataDetail>(false, path, context, false));
}

TrackFileFormatUse TrackFileFormatUse::Disable(const TvlStringT<wchar_t>& path)
{
    return Start(path, kDisabledContext, true);
}

TrackFileFormatUse TrackFileFormatUse::Find(const TvlStringT<wchar_t>& path)
{
    return path.IsEmpty() ? NoTrack() : TrackFileFormatUse(RecordTable::Get().Find(path));
}

void TrackFileFormatUse::Commit()
{
    if (m_record)
        m_record->Commit();
    m_record.reset();
}

void TrackFileFormatUse::Discard()
{
    if (m_record)
        m_record->Finish();
    m_record.reset();
}

void TrackFileFormatUse::Accept()
{
    if (m_record)
        m_record->Accept();
}

bool TrackFileFormatUse::IsAccepted() const { return m_record && m_record->IsAccepted(); }

void TrackFileFormatUse::SetExportedRange(const TvlStringT<wchar_t>& range)
{
    if (const auto lock = Lock())
        lock->SetExportedRange(range);
}

void TrackFileFormatUse::FillExportEvent(const TvlStringT<wchar_t>& filter, ITovelCmn_Doc* document, bool accept,
    const TvlStringT<wchar_t>& exportedLocation, const int& resolution)
{
    if (!m_record)
        return;
    {
        const TrackFileFormatUseDataLock lock = Lock();
        if (!filter.IsEmpty())
            lock->SetFilter(filter);
        ITovelCmn_App* const application = TvlComponent::GetAppInterface();
        if (!document && application)
            document = application->GetActiveDocument();
        if (document)
            FillFromDocument(*lock.operator->(), *document);
        if (!exportedLocation.IsEmpty())
            lock->SetExportedLocation(exportedLocation);
        if (resolution != 0)
            lock->SetExportFileResolution(resolution);
    }
    if (accept)
        Accept();
}

void TrackFileFormatUse::StartDurationTracker()
{
    if (m_record)
        m_record->StartStopwatch();
}

void TrackFileFormatUse::StopDurationTracker()
{
    if (m_record)
        m_record->StopStopwatch();
}

void TrackFileFormatUse::ResumeDurationTracker()
{
    if (m_record)
        m_record->ResumeStopwatch();
}

void TrackFileFormatUse::MarkDuration(TrackFileFormatUseDurationMarker marker)
{
    if (m_record)
        m_record->Mark(marker);
}

TvlUtils::TimeDelta TrackFileFormatUse::GetMarkedDuration(TrackFileFormatUseDurationMarker marker) const
{
    return m_record ? m_record->GetMark(marker) : TvlUtils::TimeDelta();
}

TrackFileFormatUseWeak::TrackFileFormatUseWeak(const TrackFileFormatUse& use) : m_record(use.m_record) { }

TrackFileFormatUseWeak& TrackFileFormatUseWeak::operator=(const TrackFileFormatUse& use)
{
    m_record = use.m_record;
    return *this;
}

TrackFileFormatUseWeak::operator bool() const { return !m_record.expired(); }

TrackFileFormatUseDataLock TrackFileFormatUseWeak::Lock() const { return TrackFileFormatUseDataLock(m_record.lock()); }
