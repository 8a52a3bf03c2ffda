#include "resources/ResourceOverride.h"

CObmgerResourceOverride::CObmgerResourceOverride() : m_previous(AfxGetResourceHandle())
{
    AfxSetResourceHandle(obmgr::LibraryResourceHandle());
}

CObmgerResourceOverride::~CObmgerResourceOverride()
{
    AfxSetResourceHandle(m_previous);
}
