#include "framework/Object.h"

bool CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const noexcept
{
    for (const CRuntimeClass* step = this; step; step = step->m_pBaseClass)
        if (step == base) return true;
    return false;
}

constinit CRuntimeClass CObject::classCObject = {"CObject", nullptr, nullptr};

CObject::~CObject() = default;

CRuntimeClass* CObject::GetRuntimeClass() const
{
    return &classCObject;
}

IMPLEMENT_DYNCREATE(CDocument, CObject)

CDocument::~CDocument() = default;
