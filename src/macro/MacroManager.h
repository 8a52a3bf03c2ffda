// KelMacroManager: what resolvers work with. For now the design, the rounding records, the ini file, and what becomes
// of macros that cannot be resolved.
#pragma once

#include "common/Export.h"
#include "framework/Object.h"
#include "framework/String.h"

class CCalcfig;
class CDrawfig;
class CObjectManager;

// Object manager and rounding records are borrowed.
class RIVELTA_API KelMacroManager : public CObject {
    DECLARE_DYNCREATE(KelMacroManager)

public:
    const CObjectManager* GetManager() const { return m_manager; }
    void SetManager(const CObjectManager* manager) { m_manager = manager; }
    const CDrawfig* GetDrawfig() const { return m_drawfig; }
    void SetDrawfig(const CDrawfig* drawfig) { m_drawfig = drawfig; }
    const CCalcfig* GetCalcfig() const { return m_calcfig; }
    void SetCalcfig(const CCalcfig* calcfig) { m_calcfig = calcfig; }
    const CString& GetInifilePath() const { return m_inifilePath; }
    void SetInifilePath(const CString& path) { m_inifilePath = path; }

    // Whether a macro that could not be resolved stands in the text as its token; else it is left out.
    bool IsOutputUnresolvedMacro() const { return m_outputsUnresolved; }
    void SetUnresolvedMacroOutputFlg(bool output) { m_outputsUnresolved = output; }

private:
    const CObjectManager* m_manager = nullptr;
    const CDrawfig* m_drawfig = nullptr;
    const CCalcfig* m_calcfig = nullptr;
    CString m_inifilePath;
    bool m_outputsUnresolved = true;
};
