// The 93 record classes, made from the type table. A class whose records have more than links and attributes gets a
// base of its own here; all the rest differ in nothing but their row.
#pragma once

#include "common/Id32.h"
#include "objects/PipeObject.h"

// A record with one owner: what the id names stands in the type's row.
class RIVELTA_API COwnedObject : public CLinkedObject<1> {
public:
    explicit COwnedObject(unsigned long objectId = 0, unsigned long ownerId = 0)
        : CLinkedObject<1>(objectId, {obmgr::Id32(ownerId)})
    {
    }
    unsigned long GetOwnerId() const { return GetLink(0); }
    void SetOwnerId(unsigned long ownerId) { SetLink(0, obmgr::Id32(ownerId)); }
};

namespace obmgr {

// The link fields, in the order of the type table.
enum SpanLink { kUpperNode, kLowerNode, kRouteOfSpan };
enum RouteLink { kWebOfRoute, kConnect };
constexpr int kOwner = 0; // of the types with one owner

// ---- the owner under its own name ----
template <OBJECTTYPE Owner> class OwnedBy : public COwnedObject {
public:
    using COwnedObject::COwnedObject;
};

#define OBM_OWNED_BY(Owner)                                                                                            \
    template <> class OwnedBy<objectdata::Owner> : public COwnedObject {                                               \
    public:                                                                                                            \
        using COwnedObject::COwnedObject;                                                                              \
        unsigned long Get##Owner##Id() const { return GetLink(0); }                                                    \
        void Set##Owner##Id(unsigned long id) { SetOwnerId(id); }                                                      \
    };
OBM_OWNED_BY(Web)
OBM_OWNED_BY(Route)
OBM_OWNED_BY(Span)
OBM_OWNED_BY(AreaInq)
OBM_OWNED_BY(AreaOutq)
OBM_OWNED_BY(Exec)
OBM_OWNED_BY(Profilearang)
OBM_OWNED_BY(Sheetarang)
#undef OBM_OWNED_BY

template <> class OwnedBy<objectdata::Node> : public COwnedObject {
public:
    using COwnedObject::COwnedObject;
    unsigned long GetNodeID() const { return GetLink(0); }
    unsigned long GetNodeId() const { return GetLink(0); }
    void SetNodeID(unsigned long id) { SetOwnerId(id); }
    void SetNodeId(unsigned long id) { SetOwnerId(id); }
};

// ---- bases of the types with more behaviour ----

// A pipe stretch. Water flows from the upper node to the lower node.
class SpanBase : public CLinkedObject<3> {
public:
    explicit SpanBase(unsigned long objectId = 0, unsigned long upperNodeId = 0, unsigned long lowerNodeId = 0,
                      unsigned long routeId = 0)
        : CLinkedObject<3>(objectId, {Id32(upperNodeId), Id32(lowerNodeId), Id32(routeId)})
    {
    }
    unsigned long GetUpperNodeId() const { return GetLink(0); }
    unsigned long GetLowerNodeId() const { return GetLink(1); }
    unsigned long GetRouteId() const { return GetLink(2); }
    void SetUpperNodeId(unsigned long id) { SetLink(0, Id32(id)); }
    void SetLowerNodeId(unsigned long id) { SetLink(1, Id32(id)); }
    void SetRouteId(unsigned long id) { SetLink(2, Id32(id)); }
};

// A chain of spans. The connect id is the route that this one flows into, 0 at the flow end.
class RouteBase : public CLinkedObject<2> {
public:
    explicit RouteBase(unsigned long objectId = 0, unsigned long webId = 0, unsigned long connectId = 0)
        : CLinkedObject<2>(objectId, {Id32(webId), Id32(connectId)})
    {
    }
    unsigned long GetWebId() const { return GetLink(0); }
    unsigned long GetConnectId() const { return GetLink(1); }
    void SetWebId(unsigned long id) { SetLink(0, Id32(id)); }
    void SetConnectId(unsigned long id) { SetLink(1, Id32(id)); }
};

// A crossing point: one id is the route on which it lies, the other the underground facility or another web's span.
class IntPosBase : public CLinkedObject<2> {
public:
    explicit IntPosBase(unsigned long objectId = 0, unsigned long firstId = 0, unsigned long secondId = 0)
        : CLinkedObject<2>(objectId, {Id32(firstId), Id32(secondId)})
    {
    }
    unsigned long GetObj1Id() const { return GetLink(0); }
    unsigned long GetObj2Id() const { return GetLink(1); }
    void SetObj1Id(unsigned long id) { SetLink(0, Id32(id)); }
    void SetObj2Id(unsigned long id) { SetLink(1, Id32(id)); }
};

// Interceptor inflow; built with signed ids, unlike all others.
class IcpInqBase : public OwnedBy<objectdata::Node> {
public:
    explicit IcpInqBase(long objectId = 0, long nodeId = 0)
        : OwnedBy<objectdata::Node>(static_cast<unsigned long>(objectId), static_cast<unsigned long>(nodeId))
    {
    }
};

// The empirical storm method, with the area that it is combined over.
class RIVELTA_API QrexperimentBase : public CPipeObject {
public:
    explicit QrexperimentBase(unsigned long objectId = 0) : CPipeObject(objectId) {}
    QrexperimentBase(const QrexperimentBase&) = default;
    QrexperimentBase& operator=(const QrexperimentBase& other);
    double GetMultiArea() const { return m_multiArea; }
    void SetMultiArea(double area);

private:
    double m_multiArea = 0.0;
};

class RIVELTA_API DrawformdatBase : public CPipeObject {
public:
    using CPipeObject::CPipeObject;
    bool ConvertVersion(const CVersionConvertFlags& flags) override;
};

class RIVELTA_API DrawbeltdatBase : public CPipeObject {
public:
    using CPipeObject::CPipeObject;
    bool ConvertVersion(const CVersionConvertFlags& flags) override;
};

class RIVELTA_API DrawsecinfodatBase : public CPipeObject {
public:
    using CPipeObject::CPipeObject;
    bool ConvertVersion(const CVersionConvertFlags& flags) override;
};

// A pen of the longitudinal section.
class RIVELTA_API DrawpendatBase : public CPipeObject {
public:
    using CPipeObject::CPipeObject;

    // What a pen draws. Types run from 1 to 92; 200 is a pen of type 49 from before the type got its present meaning.
    enum TYPE : int { kFirstType = 1, kLastType = 92, kFormerType49 = 200 };

    // The place of the type in lists of pens: rises with the type number. 0 for a number that is no type.
    static int GetPentypeOrder(unsigned int type);
};

// ---- which base a type has ----
struct PlainBase {
    using type = CPipeObject;
};
template <OBJECTTYPE Type, OBJECTTYPE Owner> struct BaseOf {
    using type = OwnedBy<Owner>;
};
template <OBJECTTYPE Type> struct BaseOf<Type, objectdata::NoOwner> : PlainBase {
};

#define OBM_BASE(T, owner, Base)                                                                                       \
    template <> struct BaseOf<objectdata::T, objectdata::owner> {                                                      \
        using type = Base;                                                                                             \
    };
OBM_BASE(Span, Route, SpanBase)
OBM_BASE(Route, Web, RouteBase)
OBM_BASE(IntPos, NoOwner, IntPosBase)
OBM_BASE(IcpInq, Node, IcpInqBase)
OBM_BASE(Web, NoOwner, CDisposalPipeObject)
OBM_BASE(Section, NoOwner, CDisposalPipeObject)
OBM_BASE(Usedarea, NoOwner, CDisposalPipeObject)
OBM_BASE(Noarea, NoOwner, CDisposalPipeObject)
OBM_BASE(Divide, NoOwner, CDisposalPipeObject)
OBM_BASE(Border, NoOwner, CDisposalPipeObject)
OBM_BASE(Pipe, NoOwner, CPipeSection)
OBM_BASE(Obox, NoOwner, CPipeSection)
OBM_BASE(Cbox, NoOwner, CPipeSection)
OBM_BASE(Ubox, NoOwner, CPipeSection)
OBM_BASE(Egg, NoOwner, CPipeSection)
OBM_BASE(Qrexperiment, NoOwner, QrexperimentBase)
OBM_BASE(Drawformdat, NoOwner, DrawformdatBase)
OBM_BASE(Drawbeltdat, NoOwner, DrawbeltdatBase)
OBM_BASE(Drawsecinfodat, NoOwner, DrawsecinfodatBase)
OBM_BASE(Drawpendat, NoOwner, DrawpendatBase)
#undef OBM_BASE

// The type number of a record class.
template <class Record> struct RecordTraits;

} // namespace obmgr

// The constructors take the id and then the links of the row, 0 where left out.
#define OBM_RECORD(T, tag, owner, ...)                                                                                 \
    namespace obmgr {                                                                                                  \
    using T##Parent = BaseOf<objectdata::T, objectdata::owner>::type;                                                  \
    }                                                                                                                  \
    class RIVELTA_API C##T : public obmgr::T##Parent {                                                                 \
        DECLARE_DYNCREATE(C##T)                                                                                        \
    public:                                                                                                            \
        using Parent = obmgr::T##Parent;                                                                               \
        using Parent::Parent;                                                                                          \
        C##T() = default;                                                                                              \
        objectdata::OBJECTTYPE GetObjectType() const override { return objectdata::T; }                                \
                                                                                                                       \
    protected:                                                                                                         \
        CPipeObject* Clone() const override { return new C##T(*this); }                                                \
    };                                                                                                                 \
    template <> struct obmgr::RecordTraits<C##T> {                                                                     \
        static constexpr OBJECTTYPE type = objectdata::T;                                                              \
    };
#include "objects/ObjectTypes.def"

// Which pen stands under which number of an old file.
class CPenNumberPenType {
public:
    CPenNumberPenType(int penNumber, CDrawpendat::TYPE type) : m_penNumber(penNumber), m_type(type) {}
    int GetPenNumber() const { return m_penNumber; }
    CDrawpendat::TYPE GetPenType() const { return m_type; }

private:
    int m_penNumber;
    CDrawpendat::TYPE m_type;
};
