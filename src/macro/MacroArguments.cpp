#include "macro/MacroArguments.h"

#include "common/Id32.h"
#include "macro/MacroObjects.h"
#include "store/ObjectManager.h"

#include <limits>

using objectdata::OBJECTTYPE;
using obmgr::Id32;

IMPLEMENT_DYNAMIC(KelMacroArgPipeObject, KelArgHeader)
IMPLEMENT_DYNAMIC(KelMacroArgSpan, KelMacroArgPipeObject)
IMPLEMENT_DYNAMIC(KelMacroArgNode, KelMacroArgPipeObject)
IMPLEMENT_DYNAMIC(KelMacroArgSection, KelMacroArgPipeObject)
IMPLEMENT_DYNAMIC(KelMacroArgProfilelayout, KelMacroArgPipeObject)

// ---- any object ----

KelMacroArgPipeObject::KelMacroArgPipeObject(const KelMacroArgPipeObject& other) : KelArgHeader(other)
{
    CopyFields(other);
}

KelMacroArgPipeObject::KelMacroArgPipeObject(OBJECTTYPE type, const KelMacroArgPipeObject* source)
{
    if (source) {
        CopyFields(*source);
        m_calcfig = source->m_calcfig;
        if (source->m_pipeObjectType != type) m_pipeObjectId = 0;
    }
    m_pipeObjectType = type;
}

void KelMacroArgPipeObject::CopyFields(const KelMacroArgPipeObject& source)
{
    m_objMan = source.m_objMan;
    m_drawfig = source.m_drawfig;
    m_pipeObjectType = source.m_pipeObjectType;
    m_pipeObjectId = source.m_pipeObjectId;
    m_inifilePath = source.m_inifilePath;
}

void KelMacroArgPipeObject::Copy(const KelArgHeader* source)
{
    if (!source) return;
    KelArgHeader::Copy(source);
    if (const auto* const argument = dynamic_cast<const KelMacroArgPipeObject*>(source)) CopyFields(*argument);
}

KelMacroArgPipeObject* KelMacroArgPipeObject::Clone() const
{
    return new KelMacroArgPipeObject(*this);
}

CPipeObject* KelMacroArgPipeObject::GetPipeObject(const CObjectManager* manager) const
{
    if (!manager || m_pipeObjectId == 0) return nullptr;
    switch (m_pipeObjectType) {
    case objectdata::Project: return manager->GetProjectObjectOriginal();
    case objectdata::Section: return manager->GetSectionObjectOriginal(m_pipeObjectId);
    case objectdata::Drawformdat: return manager->GetDrawformdatObjectOriginal(m_pipeObjectId);
    case objectdata::Profilelayout: return manager->GetProfilelayoutObjectOriginal(m_pipeObjectId);
    default:
        if (!obmgr::IsLabelledType(m_pipeObjectType)) return nullptr;
        return manager->TableOf(m_pipeObjectType).Find(m_pipeObjectId);
    }
}

// ---- span ----

KelMacroArgSpan::KelMacroArgSpan(const KelMacroArgPipeObject* source) : KelMacroArgPipeObject(objectdata::Span, source)
{
}

KelMacroArgSpan::KelMacroArgSpan(const KelMacroArgSpan& other) : KelMacroArgPipeObject(other), m_dir(other.m_dir) {}

void KelMacroArgSpan::Copy(const KelArgHeader* source)
{
    KelMacroArgPipeObject::Copy(source);
    if (const auto* const argument = dynamic_cast<const KelMacroArgSpan*>(source)) m_dir = argument->m_dir;
}

KelMacroArgSpan* KelMacroArgSpan::Clone() const
{
    return new KelMacroArgSpan(*this);
}

CPipeObject* KelMacroArgSpan::GetPipeObject(const CObjectManager* manager) const
{
    return manager ? manager->GetSpanObjectOriginal(Id32(GetPipeObjectId())) : nullptr;
}

void KelMacroArgSpan::SetUpperAndLowerSpanId()
{
    const CObjectManager* const manager = GetObjMan();
    const long spanId = Id32(GetPipeObjectId());
    if (!manager || spanId == 0 || !manager->GetSpanObjectOriginal(spanId)) return;
    const long webId = manager->GetWebIdFromSpan(spanId);
    if (webId == 0) return;
    CList<long, long> inflowIds;
    if (!manager->GetFlowInSpanToSpan(webId, spanId, inflowIds)) return;

    double smallest = std::numeric_limits<double>::max();
    double largest = std::numeric_limits<double>::lowest();
    for (const long inflowId : inflowIds) {
        const CSpan* const inflow = manager->GetSpanObjectOriginal(inflowId);
        if (!inflow) continue;
        const double level = inflow->GetSubAttributeDouble(L"lowercentinv", 0.0);
        if (level < smallest) {
            smallest = level;
            SetUpperMinSpanId(inflow->GetObjectId());
        }
        if (level > largest) {
            largest = level;
            SetUpperMaxSpanId(inflow->GetObjectId());
        }
    }
    if (m_upperDrwSpanId == 0) m_upperDrwSpanId = m_upperMinSpanId;

    long lowerSpanId = 0;
    if (manager->GetLowerSpan(spanId, lowerSpanId)) SetLowerSpanId(static_cast<unsigned long>(lowerSpanId));
}

// ---- node ----

KelMacroArgNode::KelMacroArgNode(const KelMacroArgPipeObject* source) : KelMacroArgPipeObject(objectdata::Node, source)
{
}

void KelMacroArgNode::Copy(const KelArgHeader* source)
{
    KelMacroArgPipeObject::Copy(source);
    if (const auto* const argument = dynamic_cast<const KelMacroArgNode*>(source)) {
        m_lowerSpanId = argument->m_lowerSpanId;
        m_isFlowend = argument->m_isFlowend;
    }
}

KelMacroArgNode* KelMacroArgNode::Clone() const
{
    return new KelMacroArgNode(*this);
}

CPipeObject* KelMacroArgNode::GetPipeObject(const CObjectManager* manager) const
{
    return manager ? manager->GetNodeObjectOriginal(Id32(GetPipeObjectId())) : nullptr;
}

// ---- section ----

KelMacroArgSection::KelMacroArgSection(const KelMacroArgPipeObject* source)
    : KelMacroArgPipeObject(objectdata::Section, source)
{
}

void KelMacroArgSection::Copy(const KelArgHeader* source)
{
    KelMacroArgPipeObject::Copy(source);
    if (const auto* const argument = dynamic_cast<const KelMacroArgSection*>(source)) {
        m_spanId = argument->m_spanId;
        m_secname = argument->m_secname;
        m_pipeSection = argument->m_pipeSection;
        m_pipeSectionType = argument->m_pipeSectionType;
    }
}

KelMacroArgSection* KelMacroArgSection::Clone() const
{
    return new KelMacroArgSection(*this);
}

CPipeObject* KelMacroArgSection::GetPipeObject(const CObjectManager* manager) const
{
    return manager ? manager->GetSectionObjectOriginal(Id32(GetPipeObjectId())) : nullptr;
}

unsigned long KelMacroArgSection::GetKandanmenId() const
{
    return m_pipeSection ? m_pipeSection->GetObjectId() : 0;
}

const CPipeSection::tagSPEC& KelMacroArgSection::GetSpec() const
{
    static const CPipeSection none;
    return m_pipeSection ? m_pipeSection->GetSpec() : none.GetSpec();
}

// ---- profile layout ----

KelMacroArgProfilelayout::KelMacroArgProfilelayout(const KelMacroArgPipeObject* source)
    : KelMacroArgPipeObject(objectdata::Profilelayout, source)
{
}

KelMacroArgProfilelayout::KelMacroArgProfilelayout(const KelMacroArgProfilelayout& other) : KelMacroArgPipeObject(other)
{
    SetDrawlayoutList(other.m_drawlayouts);
}

void KelMacroArgProfilelayout::Copy(const KelArgHeader* source)
{
    KelMacroArgPipeObject::Copy(source);
    if (const auto* const argument = dynamic_cast<const KelMacroArgProfilelayout*>(source))
        SetDrawlayoutList(argument->m_drawlayouts);
}

KelMacroArgProfilelayout* KelMacroArgProfilelayout::Clone() const
{
    return new KelMacroArgProfilelayout(*this);
}

CPipeObject* KelMacroArgProfilelayout::GetPipeObject(const CObjectManager* manager) const
{
    return manager ? manager->GetProfilelayoutObjectOriginal(Id32(GetPipeObjectId())) : nullptr;
}

void KelMacroArgProfilelayout::SetDrawlayoutList(const CTypedPtrList<CObList, CProfilelayout*>& layouts)
{
    if (&layouts == &m_drawlayouts) return;
    m_drawlayouts.RemoveAll();
    for (CProfilelayout* const layout : layouts)
        if (layout) m_drawlayouts.AddTail(layout);
}
