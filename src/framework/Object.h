// CObject with its run-time class, and CDocument.
// DECLARE_DYNAMIC / DECLARE_DYNCREATE stand first in a class body and leave it public; the matching IMPLEMENT macro
// stands once in a source file.
#pragma once

#include "common/Export.h"

class CObject;

// What is known of a class at run time. One constant-initialised object per class.
struct RIVELTA_API CRuntimeClass {
    const char* m_lpszClassName;
    CObject* (*m_pfnCreateObject)();
    CRuntimeClass* m_pBaseClass;

    // A new object that the caller owns; null when the class cannot be made this way.
    CObject* CreateObject() const { return m_pfnCreateObject ? m_pfnCreateObject() : nullptr; }
    // True for the class itself, too.
    bool IsDerivedFrom(const CRuntimeClass* base) const noexcept;
};

class RIVELTA_API CObject {
public:
    virtual ~CObject();

    virtual CRuntimeClass* GetRuntimeClass() const;
    bool IsKindOf(const CRuntimeClass* runtimeClass) const { return GetRuntimeClass()->IsDerivedFrom(runtimeClass); }

    static constexpr CRuntimeClass* GetThisClass() noexcept { return &classCObject; }
    static CRuntimeClass classCObject;

protected:
    CObject() = default;
    CObject(const CObject&) = default;
    CObject& operator=(const CObject&) = default;
};

#define RUNTIME_CLASS(class_name) (&class_name::class##class_name)

#define DECLARE_DYNAMIC(class_name)                                                                                    \
public:                                                                                                                \
    static CRuntimeClass class##class_name;                                                                            \
    static constexpr CRuntimeClass* GetThisClass() noexcept                                                            \
    {                                                                                                                  \
        return &class##class_name;                                                                                     \
    }                                                                                                                  \
    CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(class_name)                                                                                  \
    DECLARE_DYNAMIC(class_name)                                                                                        \
    static CObject* CreateObject();

#define IMPLEMENT_DYNAMIC(class_name, base_class_name)                                                                 \
    constinit CRuntimeClass class_name::class##class_name = {#class_name, nullptr, base_class_name::GetThisClass()};   \
    CRuntimeClass* class_name::GetRuntimeClass() const                                                                 \
    {                                                                                                                  \
        return &class##class_name;                                                                                     \
    }

#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                                                               \
    CObject* class_name::CreateObject()                                                                                \
    {                                                                                                                  \
        return new class_name;                                                                                         \
    }                                                                                                                  \
    constinit CRuntimeClass class_name::class##class_name = {#class_name, &class_name::CreateObject,                   \
                                                             base_class_name::GetThisClass()};                         \
    CRuntimeClass* class_name::GetRuntimeClass() const                                                                 \
    {                                                                                                                  \
        return &class##class_name;                                                                                     \
    }

// The base of an application's document.
class RIVELTA_API CDocument : public CObject {
    DECLARE_DYNCREATE(CDocument)
    CDocument() = default;
    ~CDocument() override;
};
