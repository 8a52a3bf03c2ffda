// CObjectManager: one open design. Everything that applications do with a design goes through it.
//
// The bodies stand with their subject: families and lookups in store/, the network in network/, files in
// persistence/. Names are kept as published. All published names: docs/manager-interface.md.
//
// Ids are unique over all tables of a design; 0 means none. Id lists get results appended and are not emptied first
// unless a member says otherwise; the order is table order (the order of adding) unless a member says otherwise.
// Object lists hold live objects, which stay the table's. A removed object stays readable until the next commit.
// One thread at a time.
#pragma once

#include "objects/FileProfile.h"
#include "objects/Records.h"
#include "store/Families.h"
#include "store/ObjectDataBase.h"
#include "store/SeekSect.h"
#include "store/SortBranch.h"
#include "store/TouchedIds.h"

class CObDefManager;
class CStdioFile;
class OrnSaxParser;
namespace obmgr {
class BranchRun;
}

class RIVELTA_API CObjectManager : public CDocument {
    DECLARE_DYNCREATE(CObjectManager)

public:
    CObjectManager();
    CObjectManager(const CObjectManager&) = delete;
    CObjectManager& operator=(const CObjectManager&) = delete;
    ~CObjectManager() override;

    // ---- Life cycle and ids (store/LifeCycle.cpp) ----
    // Empties the design for the next one. The file profile, the transaction counts and the recording switch stay.
    // While a file is being read the call does nothing.
    void Initialize();
    // The last id issued; 0 in an empty design.
    long GetCurrentObjectId() const { return m_lastObjectId; }
    // The id that will be issued next; nothing is issued.
    long GetNextObjectId() const;
    // After direct changes of ids: the id lists that Add consults follow the objects again.
    void ResetObjectIdList();
    // Appends every live object, type by type in canonical order.
    void GetAllObject(CTypedPtrList<CObList, CPipeObject*>& objects) const;
    int GetAllDataCount() const;
    // Recording of the objects that reads add. The list is emptied by Initialize alone.
    void SetSaveReadObject(bool record) { m_isRecording = record; }
    bool IsSaveReadObject() const { return m_isRecording; }
    void SaveReadObject(CPipeObject* object);
    void GetSaveReadObject(CTypedPtrList<CObList, CPipeObject*>& objects) const;
    void SetRegKey(const wchar_t* key) { m_registryKey = key; }
    const CString& GetRegKey() const { return m_registryKey; }
    CFileProfile* GetFileProfile() { return &m_fileProfile; }
    const CFileProfile& GetFileProfile() const { return m_fileProfile; }
    const CFileProfile& GetProfileObject() const { return m_fileProfile; }
    void SetProfileObject(const CFileProfile& profile) { m_fileProfile = profile; }
    // The path of the file that was read last, or is being read.
    const CString& GetCurrentFilePath() const { return m_currentFilePath; }

    // ---- Transactions (store/Transactions.cpp) ----
    // Nested; the outermost begin fixes the state that the outermost abort brings back, ids included. An inner end
    // has no effect of its own. Pointers to live objects end with an outermost abort.
    void BeginTransaction();
    // Destroys the objects removed so far. While a file is being read, ends of transactions do nothing.
    void CommitTransaction();
    // Raises CInvalidArgException when Initialize has thrown away what the begin had noted.
    void AbortTransaction();
    // Does nothing; callers use it all the same.
    void VerifyTransaction() {}

    // ---- Families, one set per record type (shapes: store/Families.h; bodies: store/Families.cpp) ----
#define OBM_RECORD(T, tag, owner, create, get, set, ids, objects, del, ...)                                            \
    CObjectDataBase<C##T>& Get##T##Db()                                                                                \
    {                                                                                                                  \
        return m_##T;                                                                                                  \
    }                                                                                                                  \
    const CObjectDataBase<C##T>& Get##T##Db() const                                                                    \
    {                                                                                                                  \
        return m_##T;                                                                                                  \
    }                                                                                                                  \
    OBM_DECLARE_CREATE_##create(T) OBM_DECLARE_GET_##get(T) OBM_DECLARE_SET_##set(T) OBM_DECLARE_IDS_##ids(T)          \
        OBM_DECLARE_OBJECTS_##objects(T) OBM_DECLARE_DELETE_##del(T)
#include "objects/ObjectTypes.def"

    // ---- Families with a shape of their own (store/SpecialFamilies.cpp) ----
    // The id of the first project; false when there is none.
    bool GetProjectId(long& id) const;
    CProject* GetProjectObject(long id) const;
    CProject* GetProjectObjectOriginal(long id) const;
    // The first project; null when there is none.
    CProject* GetProjectObjectOriginal() const;
    // The routes of a web, the spans of a route, in table order. False when the table is empty or `ids` stays empty.
    bool GetRouteIdList(long webId, CList<long, long>& ids) const;
    bool GetSpanIdList(long routeId, CList<long, long>& ids) const;
    // Crossing points whose first or second id is the route.
    bool GetIntPosIdList(long routeId, CList<long, long>& ids) const;
    bool GetProfilelayoutObjectAll(CTypedPtrList<CObList, CProfilelayout*>& objects) const;
    // By the keys "sdispanid" and "dbtspanid", which hold the span.
    bool GetSpdxfinIdList(long spanId, CList<long, long>& ids) const;
    bool GetDrawbelttxIdList(long spanId, CList<long, long>& ids) const;
    // By the keys "svspid" and "ohspid", which hold the span.
    bool GetSecvalveIdList(long spanId, CList<long, long>& ids) const;
    bool GetOhaulIdList(long spanId, CList<long, long>& ids) const;
    // By the name of the method that the records belong to.
    bool GetQrmultidatIdList(const CString& methodName, CList<long, long>& ids) const;
    bool GetAreasupveIdList(const CString& methodName, CList<long, long>& ids) const;
    bool GetQrrivertimeIdList(const CString& methodName, CList<long, long>& ids) const;
    // The pipe sections whose section key is the section's keyword, kind by kind in look-up order; `type` is the
    // GetSectType value of the last one, untouched when there is none.
    bool GetPipeIdListOfSection(long sectionId, int& type, CList<long, long>& ids) const;
    bool GetSectGroupRecIdListOfSectGroup(long groupId, CList<long, long>& ids) const;
    bool GetSecgrouprecIdList(const CString& groupName, CList<long, long>& ids) const;
    // Write "dpdtype" and "order" into `values` and create. The range form makes one pen a type, notes each id (0 for
    // a failure) under the type, and is true when at least one was made; false at once when `first` is above `last`.
    unsigned long CreateDrawpendat(CDrawpendat::TYPE type, CMapStringToString& values);
    bool CreateDrawpendat(CDrawpendat::TYPE first, CDrawpendat::TYPE last, CMapStringToString& values,
                          CMap<int, int, int, int>& ids);

    // ---- Deletes that take other records along (store/DeleteCascades.cpp) ----
    bool DeleteNodeObject(long nodeId);
    bool DeleteIcpInqByNode(long nodeId);
    bool DeleteAreaInqObject(long id);
    bool DeleteAreaOutqObject(long id);
    bool DeleteAreaInqInareaset(long areaInqId);
    bool DeleteAreaOutqOutareaset(long areaOutqId);
    bool DeleteSpanAreaset(long spanId);
    bool DeleteSpanAreatset(long spanId);
    bool DeleteAreatset(long spanId);
    bool DeleteSpanSpdxfin(long spanId);
    bool DeleteSpanDrawbelttx(long spanId);
    bool DeleteQrrationalObject(long id);
    bool DeleteQrexperimentObject(long id);
    bool DeleteQrlineObject(long id);
    bool DeleteQrriverObject(long id);
    bool DeleteQrmultiObject(long id);
    // By method name. The first goes by the key "qtqrname", which records of this type do not carry: so it finds
    // only records that were given the key, or for the empty name those without it. Settled behaviour.
    bool DeleteAreasupveObject(const CString& methodName);
    bool DeleteQrmultidatObject(const CString& methodName);
    bool DeleteQrrivertimeObject(const CString& methodName);
    bool DeleteExecObject(long id);
    // Takes an owner id, unlike its namesakes; the second takes the record's own id.
    bool DeleteGeometryObject(long ownerId);
    bool DeleteGeometrySelfObject(long id);

    // ---- Default attributes (store/ObDefManager.cpp) ----
    // The attributes of the pen `penId`, or the defaults of the tag when there is no such pen.
    bool GetDefValue(unsigned long penId, const CString& name, CMapStringToString& values) const;
    // Destroys the process's default attribute table and takes over the given one; null stands for an empty one.
    static void ReSetDefManager(CObDefManager* manager);

    // ---- Record lookups by name (store/RecordLookups.cpp); names are compared exactly, the first match counts ----
    bool GetSectRecObject(const CString& name, const CString& tag, const CString& key, const CPipeSection* object,
                          unsigned long& id, CString& type) const;
    // The pipe section with the name, 0 when none; `type` gets its tag, `object` (may be null) the live record.
    unsigned long GetSectRecId(const CString& name, CString& type, CPipeSection** object) const;
    // The section record to which a section key leads through the pipe sections.
    bool GetSectId(const CString& key, long& id) const;
    // The section record with the keyword, 0 when none.
    long GetSectionId(const CString& keyword) const;
    // 0 pipe, 2 open box, 1 closed box, 3 U-shape, 4 egg.
    bool GetSectType(long id, int& type) const;
    // Metres. Every pointer may be null.
    bool GetPipeInfo(const CString& name, double* height, double* width, double* topThick, double* bottomThick,
                     double* base, CString& type) const;
    // Takes the name from `spec` and fills it from the section of that name.
    bool GetPipeSpec(CPipeSection::tagSPEC& spec) const;
    // The calculation method with the name, 0 when none; `tag` then stays as it was.
    long GetFuncRecId(const CString& name, CString& tag) const;
    // With web 0 the project's active web. 0 when none.
    long GetRouteIdFromRouteNum(const CString& number, long web) const;
    CProfilearang* GetProfilearangObjectFromName(const CString& name) const;
    // The manhole class with the code.
    bool GetManHoleId(const CString& code, long& id) const;
    void GetSectGroupNameList(CStringArray& names) const;
    // Sums over the area records of an inflow or outflow; `numbers` and `comments` get one entry a record.
    bool GetSumHouseAreaOfAreainq(unsigned long id, double& houses, double& area, CStringArray& numbers,
                                  CStringArray& comments) const;
    bool GetSumHouseAreaOfAreaoutq(unsigned long id, double& houses, double& area, CStringArray& numbers,
                                   CStringArray& comments) const;
    // Removes all drawing formats; an abort brings them back.
    void DrawFigureInitialize();

    // ---- Files (persistence/) ----
    // Opens the frame of a file in the form of the data version; the file is open in the fitting encoding.
    bool StartWritePipeData(CStdioFile& file, CString& error, int dataver);
    bool EndWritePipeData(CStdioFile& file, CString& error, int dataver);
    // A complete save. `details` gets the lines of records that could not be written. What was written before a
    // failure stays in the file, without its closing tags.
    bool WritePipeObject(CStdioFile& file, CString& error, int dataver);
    bool WritePipeObject(CStdioFile& file, CString& error, CStringArray& details, int dataver);
    // Reads a file into the design; with `append` its ids are moved behind the last issued one. On false `error`
    // says why, and what was read so far stays. A second read while one is running is refused.
    bool CreatePipeObjectFromFile(const CString& path, CString& error, bool append);

    // ---- Network construction (network/NetworkConstruction.cpp, network/SpanConstruction.cpp) ----
    // Nothing here opens a transaction: a call that fails half-way leaves what it has done to the caller's abort.
    // A web comes with one calcfig, drawfig and sheetfig of its own.
    bool CreateWeb(int disposalType, const CArray<CKeyValue, CKeyValue>& values, long* newId);
    CWeb* CreateWeb(int disposalType, const CArray<CKeyValue, CKeyValue>& values);
    // A span comes with one area record. The node and route ids are not checked.
    bool CreateSpan(long upperNodeId, long lowerNodeId, long routeId, const CArray<CKeyValue, CKeyValue>& values,
                    long* newId);
    CSpan* CreateSpan(long upperNodeId, long lowerNodeId, long routeId, const CArray<CKeyValue, CKeyValue>& values);
    bool CreateSpanNoarea(long upperNodeId, long lowerNodeId, long routeId, const CArray<CKeyValue, CKeyValue>& values,
                          long* newId);
    CSpan* CreateSpanNoarea(long upperNodeId, long lowerNodeId, long routeId,
                            const CArray<CKeyValue, CKeyValue>& values);
    // A new node and a new span at one end of a span, in its route. `below`: the span now ends at the new node, and the
    // new span goes on from there to the old lower node. Otherwise the new span ends at the span's upper node, and the
    // span stays as it is. The form that tells the node also numbers both ("order") and gives the span the web's
    // default calculation style; both pointers may be null. False for an unknown span, with nothing made.
    bool CreateSpanNode(long spanId, const CArray<CKeyValue, CKeyValue>& values, long* newSpanId, bool below);
    bool CreateSpanNode(long spanId, const CArray<CKeyValue, CKeyValue>& values, long* newSpanId, long* newNodeId,
                        bool below);
    // A new route with its first span, which flows into the top of the connect route, or with connect id 0 into the
    // web's flow end; a web without one gets a node for it. Null on failure, with the steps so far left standing.
    CRoute* CreateRouteSpanNode(long webId, long connectId, const CArray<CKeyValue, CKeyValue>& values, CSpan*& span);
    // `count` more spans at the lower end of a route, all with `values` and numbered on ("spno", "order"). The route's
    // lowest node stays its lowest. New ids are appended in downstream order. False for a route without a lowest span.
    bool CreateMultiSpanNode(long routeId, const CArray<CKeyValue, CKeyValue>& values, int count,
                             CList<long, long>& spanIds, CList<long, long>& nodeIds);
    // The same with default values and without numbers.
    bool AddSpan(long routeId, unsigned count, CList<long, long>& spanIds);
    bool AddSpan(long routeId, unsigned count, CTypedPtrList<CObList, CSpan*>& spans);
    // `count` new spans below a span, before its old lower node. The route id is not used.
    bool InsertSpan(long routeId, long spanId, unsigned count, CList<long, long>& spanIds);
    bool InsertSpan(long routeId, long spanId, unsigned count, CTypedPtrList<CObList, CSpan*>& spans);
    // Cuts a span into `parts` pieces in line. Appends the span, then the new pieces downstream. "splength" stays as it
    // was, and the new pieces have the default length. False for 0 parts and for an unknown span.
    bool DivideSpan(long spanId, unsigned parts, CList<long, long>& spanIds);
    // Takes `count` spans off the lower end of a route, and the upper node of each; the route's lowest node moves up to
    // the span that is now the lowest. What hangs on the spans stays in its tables, unlike with DeleteSpanObject. A
    // route is never emptied: false when it has no more than `count` spans. `removed` gets the spans, lowest first;
    // they are readable until the next commit.
    bool RemoveSpan(long routeId, unsigned count);
    bool RemoveSpan(long routeId, unsigned count, CTypedPtrList<CObList, CSpan*>& removed);

    // ---- Order within a route (network/RouteSpans.cpp) ----
    // A route is a chain of spans; their order comes from the node ids alone. Look-ups take the first match in table
    // order, so that a damaged route gives a well-defined wrong answer. Spans of a ring have no ends: false.
    // The first lower node, in span order, that is no upper node within the route; and the mirror of it.
    bool GetMostLowerNodeId(long routeId, long& nodeId) const;
    bool GetMostUpperNodeId(long routeId, long& nodeId) const;
    // Walks up from the lowest node, a step a span. Where the chain is broken the span before is taken again. With
    // `lowestFirst` the spans are appended; else they are put at the head of the list, reading from the top down.
    bool GetSortSpanInRoute(long routeId, CList<long, long>& spanIds, bool lowestFirst) const;
    bool GetSortSpanInRoute(long routeId, CTypedPtrList<CObList, CSpan*>& spans, bool lowestFirst) const;
    // Stricter: walks from the end that comes first, appends, and gives false with nothing appended for a broken chain.
    bool GetSortSpanInRoute(long routeId, CList<const CSpan*>& spans, bool lowestFirst) const;
    // The upper nodes of the spans from the top down. The lowest node of the route is not among them.
    bool GetSortUpNodeInRoute(long routeId, CList<long, long>& nodeIds) const;
    // From the lowest end up. The lowest node is left out when `nodes` has it: routes that meet there list it once.
    bool GetSortSpanNodeInRoute(long routeId, CTypedPtrList<CObList, CSpan*>& spans,
                                CTypedPtrList<CObList, CNode*>& nodes) const;
    // Not sorted: table order, whatever `lowestFirst` says.
    bool GetSpanObjectListFromRoute(long routeId, bool lowestFirst, CList<const CSpan*>& spans, bool sorted) const;
    bool GetSpanObjectListFromRoute(long routeId, bool lowestFirst, CTypedPtrList<CObList, CSpan*>& spans,
                                    bool sorted) const;
    int GetSpanNumInRoute(long routeId) const;
    // The sum of "splength", metres. False for a route without spans.
    bool GetRouteLength(long routeId, double& length) const;
    // True for the uppermost span of a route; `secondSpanId` then gets the next one down, if there is one.
    bool IsFirstSpanAndGetSecondSpan(long spanId, long& secondSpanId) const;

    // ---- From a span or a node to its neighbours (network/SpanNeighbours.cpp) ----
    // The first span, of any route, that starts where this one ends: the one that carries the flow on.
    bool GetLowerSpan(long spanId, long& lowerSpanId) const;
    // The line downstream, the span itself first. It ends where it comes back to a span that it has listed. In the
    // object form the first entry is the live object; the others are copies that the caller owns.
    void GetLowerSpanObjectList(long spanId, CTypedPtrList<CObList, CSpan*>& spans) const;
    void GetLowerSpanObjectList(long spanId, CList<long, long>& spanIds) const;
    // Both ends included. False, with nothing appended, when `toSpanId` is not downstream.
    bool GetLowerSpanObjectList(long fromSpanId, long toSpanId, CList<long, long>& spanIds) const;
    // The spans that end where this one starts: those of one web; and all, into an emptied array, with their number.
    bool GetFlowInSpanToSpan(long webId, long spanId, CList<long, long>& spanIds) const;
    int GetFlowInSpanToSpan(long spanId, CArray<const CSpan*>& spans) const;
    // Empties the list first. `sort`: the highest "lowercentinv" first, equal within 1e-5 m.
    int GetUpperSpan(long spanId, bool sort, CList<long, long>& spanIds) const;
    // The main line upstream, without the span itself: at each junction the inflow with the highest "lowercentinv".
    // It ends where it comes back to a span of the line.
    void GetUpperSpanObjectList(long webId, long spanId, CList<long, long>& spanIds) const;
    // All spans that touch a node.
    bool GetConnectALlSpanToNode(long nodeId, CList<long, long>& spanIds) const;
    // The first span of a route, or of a list, that starts or ends at a node.
    bool GetSpanConnectUpperNode(long nodeId, long routeId, long& spanId) const;
    bool GetSpanConnectLowerNode(long nodeId, long routeId, long& spanId) const;
    bool GetSpanConnectUpperNode(long nodeId, const CList<long, long>& spanIds, long& spanId) const;
    bool GetSpanConnectLowerNode(long nodeId, const CList<long, long>& spanIds, long& spanId) const;
    // Those of a list that end at a node. True when `flowIn` holds anything, earlier entries included.
    bool GetFlowInSpanToNode(long nodeId, const CList<long, long>& spanIds, CList<long, long>& flowIn) const;
    bool IsConnectSpanToNode(long nodeId, const CList<long, long>& spanIds) const;
    // One node a span, in the order of the list, repeated ones included. Always true; unknown spans are left out.
    bool GetAllLowerNodeFromSpan(const CList<long, long>& spanIds, CList<long, long>& nodeIds) const;
    bool GetAllUpperNodeFromSpan(const CList<long, long>& spanIds, CList<long, long>& nodeIds) const;
    // Nearer to each other than 1e-10 m.
    bool IsEqualCoordNode(long nodeId, long otherNodeId) const;
    // Of the spans with a section record ("spsecrecname") at the record's inflow node "icinnodeid" the one with the
    // lowest "lowercentinv"; 0 when there is none.
    long GetIcpinqLowinvSpanID(long icpInqId) const;
    // The flow ends of other webs that stand where the node stands. False when there are none and at the first web
    // whose ends cannot be told, one without routes included.
    bool GetOverlapNodeFromOtherWebs(long webId, long nodeId, CList<long, long>& nodeIds) const;

    // ---- Lists and numbers of a whole web (network/WebLists.cpp, network/Areas.cpp) ----
    // A span without a live route ends the list: false, with the spans before it. Else true when the list holds
    // anything.
    bool GetSpanFromWeb(long webId, CList<long, long>& spanIds) const;
    bool GetSpanFromWeb(long webId, CTypedPtrList<CObList, CSpan*>& spans) const;
    // The upper nodes of the web's spans, repeated ones included, then each other lower node once.
    bool GetNodeIdList(long webId, CList<long, long>& nodeIds) const;
    // Sorted: by "order"; falling when not `rising`, and then put at the head of the list.
    bool GetRouteObjectListFromWeb(long webId, CTypedPtrList<CObList, CRoute*>& routes, bool rising, bool sorted) const;
    // Route after route by "order", in each the lowest span first. False, with nothing appended, when a route fails.
    bool GetSpanObjectListFromWeb(long webId, CTypedPtrList<CObList, CSpan*>& spans) const;
    // In branch order from the flow end, and copies, which the caller owns.
    bool GetSpanObjectListFromWebCopy(long webId, CTypedPtrList<CObList, CSpan*>& spans) const;
    // Sorted: the same order, each route's lowest node once, then the upper nodes. Not sorted: each end node of the
    // web's spans once, as first met route by route.
    bool GetNodeObjectListFromWeb(long webId, CTypedPtrList<CObList, CNode*>& nodes, bool sorted) const;
    // The web's spans by lower node, route by route. The caller owns the lists.
    bool CreateMapLowNodeSpan(long webId, CMap<long, long&, CList<long, long>*, CList<long, long>*>& spansByNode) const;
    void GetSpanFormProject(CList<long, long>& spanIds) const;
    // Spans whose route is one of the web's; those without a live route do not count.
    int GetSpanNumInWeb(long webId) const;
    int GetRouteNumInWeb(long webId) const;
    // The web's "wbareasetflg": with 0 the area of a whole route stands on its uppermost span. 0 when there is no web.
    int GetWbareasetflg(long spanId) const;
    // Hectares, from the area records. True when there was a record, for a span with "spnoarea" in any case.
    bool GetSpanArea(long spanId, double& area) const;
    bool GetRouteArea(long routeId, double& area) const;
    // Adds to `area`.
    bool GetWebArea(long webId, double& area) const;
    // The area of all routes upstream of a route, without its own. False when the route itself has none; with nothing
    // upstream the opposite of `flag`.
    bool GetRouteAreaT(long routeId, double& area, bool flag) const;
    // The length along the slope, metres; 0 for a span shorter than 1e-5.
    bool GetSpanSyakyori(unsigned long spanId, double& length) const;

    // ---- From a record to its web (network/WebOf.cpp): 0 when the way to the web is broken ----
    long GetWebIdFromSpan(const CSpan* span) const;
    long GetWebIdFromSpan(long spanId) const
    {
        return GetWebIdFromSpan(m_Span.Find(spanId));
    }
    // The web of the first span that touches the node.
    long GetWebIdFromNode(const CNode* node) const;
    long GetWebIdFromNode(long nodeId) const;
    long GetWebIdFromIcpInq(const CIcpInq* inflow) const;
    long GetWebIdFromIcpInq(long id) const
    {
        return GetWebIdFromIcpInq(m_IcpInq.Find(id));
    }
    long GetWebIdFromAreaSet(const CAreaSet* area) const;
    long GetWebIdFromAreaSet(long id) const
    {
        return GetWebIdFromAreaSet(m_AreaSet.Find(id));
    }
    long GetWebIdFromOutq(const COutq* outflow) const;
    long GetWebIdFromOutq(long id) const
    {
        return GetWebIdFromOutq(m_Outq.Find(id));
    }
    // The first web that the crossing has a point in.
    long GetWebIdFromInters(const CInters* crossing) const;
    long GetWebIdFromInters(long id) const
    {
        return GetWebIdFromInters(m_Inters.Find(id));
    }
    // By the first lateral ("launitid"), or vacuum joint ("vjinletid"), that names the unit.
    long GetWebIdFromLaunit(const CLaunit* unit) const;
    long GetWebIdFromLaunit(long id) const
    {
        return GetWebIdFromLaunit(m_Launit.Find(id));
    }
    long GetWebIdFromVacunit(const CVacunit* unit) const;
    long GetWebIdFromVacunit(long id) const
    {
        return GetWebIdFromVacunit(m_Vacunit.Find(id));
    }
    long GetWebIdFromSecvalve(const CSecvalve* valve) const;
    long GetWebIdFromSecvalve(long id) const
    {
        return GetWebIdFromSecvalve(m_Secvalve.Find(id));
    }
    long GetWebIdFromOhaul(const COhaul* haul) const;
    long GetWebIdFromOhaul(long id) const
    {
        return GetWebIdFromOhaul(m_Ohaul.Find(id));
    }
    // The first web with exactly this "webname".
    long GetWebIdFormName(const CString& name) const;

    // ---- Records of a web, route or span (network/RecordsOfWeb.cpp) ----
    // Table order; inflows and outflows rise by "order". A record is the web's by its route, an interceptor inflow by a
    // node of the web's spans, a section valve or overhaul place by its span, a crossing by a point on a route.
    bool GetAreaInqIdListFromWeb(long webId, CList<long, long>& ids) const;
    bool GetAreaOutqIdListFromWeb(long webId, CList<long, long>& ids) const;
    bool GetFixInqIdListFromWeb(long webId, CList<long, long>& ids) const;
    bool GetIcpInqIdListFromWeb(long webId, CList<long, long>& ids) const;
    // Those at the upper nodes of the route's spans: what comes in at its lowest node is the next route's.
    bool GetIcpInqIdListFromRoute(long routeId, CList<long, long>& ids) const;
    bool GetMountInqIdListFromWeb(long webId, CList<long, long>& ids) const;
    bool GetOutqIdListFromWeb(long webId, CList<long, long>& ids) const;
    bool GetGlChangeIdListFromWeb(long webId, CList<long, long>& ids) const;
    bool GetGlChangeIdListFromSpan(long spanId, CList<long, long>& ids) const;
    bool GetIntersIdListFromWeb(long webId, CList<long, long>& ids) const;
    bool GetIntPosIdListFromWeb(long webId, CList<long, long>& ids) const;
    bool GetLateralIdListFromWeb(long webId, CList<long, long>& ids) const;
    bool GetSecvalveIdListFromWeb(long webId, CList<long, long>& ids) const;
    bool GetOhaulIdListFromWeb(long webId, CList<long, long>& ids) const;
    // Live objects, in table order throughout.
    bool GetAreaInqObjectListFromWeb(long webId, CTypedPtrList<CObList, CAreaInq*>& objects) const;
    bool GetAreaOutqObjectListFromWeb(long webId, CTypedPtrList<CObList, CAreaOutq*>& objects) const;
    bool GetFixInqObjectListFromWeb(long webId, CTypedPtrList<CObList, CFixInq*>& objects) const;
    bool GetIcpInqObjectListFromWeb(long webId, CTypedPtrList<CObList, CIcpInq*>& objects) const;
    bool GetMountInqObjectListFromWeb(long webId, CTypedPtrList<CObList, CMountInq*>& objects) const;
    bool GetOutqObjectListFromWeb(long webId, CTypedPtrList<CObList, COutq*>& objects) const;
    bool GetGlChangeObjectListFromWeb(long webId, CTypedPtrList<CObList, CGlChange*>& objects) const;
    bool GetIntersObjectListFromWeb(long webId, CTypedPtrList<CObList, CInters*>& objects) const;
    bool GetIntPosObjectListFromWeb(long webId, CTypedPtrList<CObList, CIntPos*>& objects) const;
    bool GetLateralObjectListFromWeb(long webId, CTypedPtrList<CObList, CLateral*>& objects) const;
    bool GetVjointObjectListFromWeb(long webId, CTypedPtrList<CObList, CVjoint*>& objects) const;
    bool GetSecvalveObjectListFromWeb(long webId, CTypedPtrList<CObList, CSecvalve*>& objects) const;
    bool GetOhaulObjectListFromWeb(long webId, CTypedPtrList<CObList, COhaul*>& objects) const;
    // The runoff coefficients whose number an area record of the web's spans, inflows or outflows names.
    bool GetRaitoSetObjectListFromWeb(long webId, CTypedPtrList<CObList, CRaitoSet*>& objects) const;

    // ---- The tree of routes (network/RouteTree.cpp, network/RoutePaths.cpp) ----
    // Upper is away from the flow end. Routes outside the caller's list do not exist for a query over a list. On a ring
    // of connect ids every walk ends: a route on the way from the start is neither listed nor followed again.
    // Direct tributaries: those of a list, in its order; all, in table order; and both rising by "floworder", which
    // counts as true when there is one. The numbers are those of `out`, earlier entries included.
    int GetConnectRoute(long routeId, const CList<long, long>& candidates, CList<long, long>& out) const;
    int GetConnectRouteAll(long routeId, CList<long, long>& out) const;
    bool GetNextRouteId(long routeId, const CList<long, long>& candidates, CList<long, long>& out) const;
    bool GetNextRouteIdAll(long routeId, CList<long, long>& out) const;
    // Entries of an array, in its order; the number appended.
    int GetConnectRoute(const CArray<CRoute*>& routes, long routeId, CArray<CRoute*>& out) const;
    int GetConnectRoute(const CArray<const CRoute*>& routes, long routeId, CArray<const CRoute*>& out) const;
    // Takes the tributaries out of `routes` and appends them to `out`, last entry first, or rising by "floworder" with
    // `sort`. `recursive` goes on with each of them, the last one first. Gives the size of `out`; 0 without
    // tributaries.
    int GetConnectRoute(CArray<CRoute*>& routes, long routeId, bool recursive, bool sort, CArray<CRoute*>& out) const;
    int GetConnectRoute(CArray<const CRoute*>& routes, long routeId, bool recursive, bool sort,
                        CArray<const CRoute*>& out) const;
    // All routes upstream of a route: each behind everything that flows into it. The second form takes the candidates
    // by connect id.
    void GetConnectRouteUpperAll(long routeId, const CList<long, long>& candidates, CList<long, long>& out) const;
    void GetConnectRouteUpperAll(long routeId,
                                 const CMap<long, long&, CList<long, long>*, CList<long, long>*>& candidatesByConnectId,
                                 CList<long, long>& out) const;
    // Each before what flows into it, siblings in the order of the list.
    void GetConnectRouteUpperAllByOrder(long routeId, const CList<long, long>& candidates,
                                        CList<long, long>& out) const;
    // The routes downstream, as far as they are in the list.
    void GetConnectRouteLowerAll(long routeId, const CList<long, long>& candidates, CList<long, long>& out) const;
    // The way downstream, both ends included. False, with nothing appended, when `toRouteId` is not on it.
    bool GetRouteIdListFromTo(long fromRouteId, long toRouteId, long webId, CList<long, long>& out) const;
    // The routes of a set that flow out of it, rising by "floworder"; and those that nothing of the set flows into, in
    // the order of the set.
    bool GetLowRouteId(const CList<long, long>& routeIds, CList<long, long>& out) const;
    bool GetUpperRouteId(const CList<long, long>& routeIds, CList<long, long>& out) const;
    // The other routes along the main line above a route, as GetUpperSpanObjectList goes.
    void GetUpperRouteObjectList(long routeId, CList<long, long>& out) const;
    // One main line up from the flow end: at each junction the route with the greatest "sphst", or "sphfdt", on its
    // lowest span; of equal ones the first by "floworder". False when a route has no lowest span.
    bool GetRouteBySphst(long webId, CList<long, long>& out) const;
    bool GetRouteBySphdt(long webId, CList<long, long>& out) const;
    // The spans of a web that start where one of the given nodes of another web stands, node by node; `outNodes`, which
    // is emptied first, gets the node for each.
    bool GetOverlapRouteFromWebs(long webId, const CList<long, long>& nodeIds, CList<long, long>& outSpans,
                                 CList<long, long>& outNodes) const;
    // The top nodes of the head routes of a web. False, with nothing appended, when a route has none.
    bool GetMostUpperNode(long webId, CList<long, long>& nodeIds) const;
    // The routes of the web's spans into which no span of the design flows, a route once for each.
    bool GetMostUpperRouteByNode(long webId, CList<long, long>& routeIds) const;
    // Empty the array and fill it in table order; the number of entries.
    int GetRouteObjectArrayFromWeb(long webId, CArray<CRoute*>& routes) const;
    int GetRouteObjectArrayFromWeb(long webId, CArray<const CRoute*>& routes) const;
    int GetSpanObjectArrayFromRoute(long routeId, CArray<CSpan*>& spans) const;

    // ---- Rewiring routes (network/RouteRewiring.cpp) ----
    // Hangs a route onto another of its web, or with 0 onto the flow end, and moves its lowest node there. The old node
    // is deleted whoever else uses it. "connectnum" stays: UpdateConnectRouteNum. False for an unknown route and for
    // routes without spans.
    bool ConnectRoute(long routeId, long connectId);
    // The same for a route that goes to another web, with all that is upstream of it. `oldWebId` is not used.
    bool ChangeConnectRoute(long routeId, long connectId, long oldWebId, long newWebId);
    // "connectnum" of the web's routes follows the "routenum" of connect routes whose "rtstate" is 1.
    void UpdateConnectRouteNum(long webId);
    void ReverseIdList(CList<long, long>& ids) const;
    // Writes "mholeno" of the upper nodes as "<routenum>-<n>", n from 1; the arrays get the old and new texts.
    void UpdateManHoleNumSameRouteNum(long routeId, CStringArray& oldNumbers, CStringArray& newNumbers,
                                      bool lowestFirst);

    // ---- Flow ends (network/FlowEnds.cpp) ----
    // A node at which a span of the web ends and none starts. It is not stored. The first in span order; and all.
    bool GetFlowEndNodeId(long webId, long& nodeId) const;
    bool GetFlowEndNodeIdList(long webId, CList<long, long>& nodeIds) const;
    // The routes at the flow end whose direction is settled ("rtstate" 1), by "order". A web without routes gives true,
    // one of whose routes none qualify false.
    bool GetFlowEndFixedRoute(long webId, CList<long, long>& routeIds) const;
    // Makes the upper end of a route the outlet of its web: turns the routes down to the old flow end round and rewires
    // what joins them. The new end routes get `name` as "connectnum". Nothing happens to a route at the flow end. The
    // list is not used.
    bool ReSetFlowEndNode(long routeId, const CString& name, CList<long, long>& routeIds);
    // The same for either end: with the route's lowest node that route is not turned. Both lists are emptied and get
    // the routes that were rewired or met, and those that were turned, the last first. False when the way down does not
    // reach the flow end, and half-way when a route has no lowest node.
    bool ReSetFlowEndNodeByNode(long routeId, long nodeId, const CString& name, CList<long, long>& rewired,
                                CList<long, long>& reversed);
    // Numbers "floworder" of the routes on one connect route anew, and so on upstream: a single one gets 1, several
    // get 2, 3, ... by what they had.
    void ReSetRouteSortOrder(long webId, long connectId);
    // "divno" 1 owns a group of divide nodes, 2 is a member; `ownerId` gets the owner. Any other value gives false.
    bool IsDivideNode(long nodeId, long& ownerId) const;
    // Frees the members of a group; `nodeIds` gets them. The owner's "divno" stays. Owner 0 stands for no group.
    bool ReleaseDivideNode(long ownerId, CList<long, long>& nodeIds);
    // True when no route of the web has the name as its "routenum".
    bool CheckDuplicateFlowEndName(long webId, const CString& name) const;

    // ---- Orders of routes and records (network/BranchSort.cpp, network/RouteSort.cpp, network/RecordSort.cpp) ----
    // Of two lists the first is the input and stays; the second gets the result at its tail. False, with nothing
    // appended, for an empty set and for a route without spans.
    // Branch order: the longest line first, each tributary line before the route that it joins; and its reverse, which
    // turns the whole list round, earlier entries included.
    bool SortRouteBranchUpper(const CList<long, long>& in, CList<long, long>& out) const;
    bool SortRouteBranchLower(const CList<long, long>& in, CList<long, long>& out) const;
    // Line by line: each down to its end before the next starts; and from the bottom up, branches in the order of their
    // branch points.
    bool SortRouteMaxExtendUpper(const CList<long, long>& in, CList<long, long>& out) const;
    bool SortRouteMaxExtendLower(const CList<long, long>& in, CList<long, long>& out) const;
    // Writes the running distance along the longest line of the web, and then along each that joins the one before
    // first, metres, into "splent" of the spans. Also false for a web of rings only.
    bool SetSpanMaxExtend(long webId);
    // By "routenum": by character code; with numbers as numbers (StrNumCmp); and by "order".
    void SortRouteRouteNumber(const CList<long, long>& in, CList<long, long>& out) const;
    void SortRouteRouteNumberN3(const CList<long, long>& in, CList<long, long>& out) const;
    void SortRouteInputNumber(const CList<long, long>& in, CList<long, long>& out) const;
    // The steps of the branch sorts, over lists of chains that stay the caller's. Short is rising length, long falling.
    using SortBranches = CTypedPtrList<CPtrList, tagSortBranch*>;
    void SortRouteLength(SortBranches& chains, long low, long high) const;
    void SortRouteLengthForBuranchSortLong(SortBranches& chains) const;
    void SortRouteLengthForBuranchSortShort(SortBranches& chains) const;
    void RunBuranchSort(tagSortBranch* chain, SortBranches& chains, CList<long, long>& out) const;
    void RunBuranchMaxExtend(tagSortBranch* chain, SortBranches& chains, CList<long, long>& out) const;
    void RunBuranchExtendReverse(tagSortBranch* chain, SortBranches& chains, CList<long, long>& out) const;
    bool RunSetSplent(tagSortBranch* chain, SortBranches& chains, CList<long, long>& done);
    // The first chain with the route, or null. The second form, which removes nothing, wants the route behind it in
    // the chain to be in neither `chain` nor `out`.
    tagSortBranch* GetBuranchPoint(long routeId, const SortBranches& chains) const;
    tagSortBranch* GetAndRemoveBuranchPoint(long routeId, const SortBranches& chains, const tagSortBranch* chain,
                                            const CList<long, long>& out) const;
    // By "floworder".
    void SortFlowOrder(CList<long, long>& routeIds) const;
    void SortFlowOrder(CTypedPtrList<CObList, CRoute*>& routes) const;
    // Raises CInvalidArgException for an index outside the array.
    static void sort_route_by_floworder(CArray<const CRoute*>& routes, long low, long high);
    static void sort_route_by_floworder(CArray<CRoute*>& routes, long low, long high);
    // By "order", from index `low` to `high`, negative for the whole list. An unknown id ends the sort where it stands.
    void SortOrderRoute(CList<long, long>& routeIds, long low, long high) const;
    void SortOrderRoute(CTypedPtrList<CObList, CRoute*>& routes, long low, long high) const;
    // Rising by "order"; the last one by "lowercentinv", falling, equal within 1e-5 m.
    void SortOrderOutq(CList<long, long>& ids) const;
    void SortOrderAreaInq(CList<long, long>& ids) const;
    void SortOrderAreaOutq(CList<long, long>& ids) const;
    void SortOrderFixInq(CList<long, long>& ids) const;
    void SortOrderIcpInq(CList<long, long>& ids) const;
    void SortOrderMountInq(CList<long, long>& ids) const;
    void SortOrderWeb(CList<long, long>& ids) const;
    void SortOrderProfilearea(CList<long, long>& ids) const;
    void SortOrderSheetarea(CList<long, long>& ids) const;
    void SortOrderProfilelayout(CList<long, long>& ids) const;
    void SortOrderDrawbeltdat(CList<long, long>& ids) const;
    void SortOrderDrawsecinfodat(CList<long, long>& ids) const;
    void SortOrderSpanLowercentinv(CList<long, long>& ids) const;
    // Write "order" 1, 2, 3, ...: of webs by what they had, of section group records as the list stands.
    void ReNumberOrderWeb(CList<long, long>& ids);
    void ReNumberOrderSecgrouprec(const CList<long, long>& ids);
    // Rising, equal ones in their order; ids without an object leave the list. Always true.
    bool SortInareasetIdList(CList<long, long>& ids) const;
    bool SortOutareasetIdList(CList<long, long>& ids) const;
    bool SortAreasetIDList(CList<long, long>& ids) const;
    bool SortDrawbelttxIDList(CList<long, long>& ids) const;
    bool SortExecutionIDList(CList<long, long>& ids) const;
    bool SortRetainIDList(CList<long, long>& ids) const;
    bool SortTimberIDList(CList<long, long>& ids) const;
    bool SortFoundIDList(CList<long, long>& ids) const;
    bool SortManholeIDList(CList<long, long>& ids) const;
    bool SortSectIDList(CList<long, long>& ids) const;
    bool SortSectGroupIDList(CList<long, long>& ids) const;
    bool SortSectGroupRecIDList(CList<long, long>& ids) const;
    // 0 pipe, 1 closed box, 2 open box, 3 U-shape, 4 egg. Ids of another class, without an object or with a negative
    // "order" go to `rest`, which is emptied first.
    bool SortPipeIDList(int pipeClass, CList<long, long>& ids, CList<long, long>& rest) const;
    // Compares texts with numbers in them; 0 as soon as one of them has run out. Settled, with its asymmetries.
    static int StrNumCmp(const wchar_t* a, const wchar_t* b);
    // Leading blanks, a sign, digits; wraps in 32 bits.
    static int _fatoi(const wchar_t* text);
    static const wchar_t* SkipDigit(const wchar_t* text);

    // ---- Deletes in the network (network/NetworkDeletion.cpp, network/RouteRecordDeletion.cpp) ----
    // Each takes its own set of records along, and leaves the rest on purpose. A failure leaves what was done to the
    // caller's abort. What was removed takes up memory until the next commit.
    // Joins a span to the one above it in its route: lengths are added, area records merged by their number.
    bool ConnectSpan(long firstSpanId, long secondSpanId);
    // Closes the gap: what ended at the span's upper node ends at its lower node. The last span takes its route along
    // unless `leaveRoute`. In a web with "wbareasetflg" 0 the area records of the uppermost span move down.
    bool DeleteSpanObject(long spanId, bool leaveRoute);
    // Leaves the gap; an end node goes unless another span ends (lower node) or starts (upper node) there.
    bool DeleteSpanObjectOnly(long spanId);
    // Tributaries go on to the route's connect route. With `spansGone` the route's spans are not looked at; else false
    // for a route without spans. CAreaOutq records stay.
    bool DeleteRouteObject(long routeId, bool spansGone);
    // Tributaries become routes at the flow end, with the web's "wbendrname" as "connectnum".
    bool DeleteRouteObjectConnectEnd(long routeId);
    // With everything upstream. The flag is not used.
    bool DeleteRouteObjectUpperAll(long routeId, bool flag);
    // Table by table, without any relinking; the nodes of the spans stay, and the flow end goes with the last route.
    bool DeleteRouteObjectListAll(long webId, const CList<long, long>& routeIds);
    // False at a route without spans. The span records and the web's own settings stay. Closes the gap in "order" of
    // the webs that are left. The second form keeps the crossings.
    bool DeleteWebObject(long webId);
    bool DeleteWebObjectForQ7Export(long webId);
    bool DeleteIntersAndPointByRoute(long routeId);
    bool DeleteIntersAndPointByRouteForQ7Export(long routeId);
    bool DeleteGlchangeByRoute(long routeId);
    bool DeleteLateralByRoute(long routeId);
    bool DeleteVjointByRoute(long routeId);
    bool DeleteAreaInqByRoute(long routeId);
    bool DeleteAreaOutqByRoute(long routeId);
    bool DeleteFixInqByRoute(long routeId);
    bool DeleteMountInqByRoute(long routeId);
    bool DeleteOutqByRoute(long routeId);

    // ---- Copies in the network (network/NetworkCopy.cpp) ----
    // New objects with all attributes and new ids. What hangs on routes is not copied. A failure leaves what was made
    // to the caller's abort.
    bool CopyNodeObject(long nodeId, long& newId);
    // Does nothing; true.
    bool CopyAreaInqObject(long id, long& newId);
    // With its upper node, and with lower node 0 also its lower node. The copy keeps the route. False for a span
    // without area records.
    bool CopySpanObject(long spanId, long lowerNodeId, long& newId);
    bool CopyAreasetObjectFromSpan(long fromSpanId, long toSpanId);
    // The copy joins the top of the connect route; with 0 it has a flow end of its own.
    bool CopyRouteObject(long routeId, long connectId, long& newId);
    // With everything upstream; `newIds` gets each route before its tributaries.
    bool CopyAllUpperRouteObject(long routeId, long connectId, CList<long, long>& newIds);
    bool CopyAllUpperRouteObjectSub(long routeId, long connectId, CList<long, long>& newIds);
    // With its settings, divide span and sub-section records. Also deletes every node of the design that no span
    // touches.
    bool CopyWebObject(long webId, long& newId);

    // ---- Checks (integrity/RouteChecks.cpp, SpanLoops.cpp, SpanLinks.cpp, NameChecks.cpp) ----
    // A check finds faults and changes nothing, but for what is told. Those with a progress dialog use this library's
    // resources while they run and end early when the user cancels.
    // True when the way down by connect ids ends.
    bool CheckLoopRoute(long routeId) const;
    // Walks down from each route. 0 sound, 1 cancelled, -1 a ring of connect ids, -2 sound after corrections of
    // "connectnum", -3 a route does not meet its connect route or has no order of spans, -4 the two are in different
    // webs. Both lists are emptied; `pairs` gets the faulty route and its connect route, `changed` each route whose
    // "connectnum" was put right, also before a fault.
    int GetAbnormalRoute(const CList<long, long>& routeIds, CList<long, long>& pairs, CList<long, long>& changed);
    // -1 no spans or a broken record, 0 no loop, 1 with the spans on and between loops appended, 2 cancelled. A span
    // from a node to itself alone is no loop. Appends in the order of the nodes as the spans first name them.
    int CheckSpanLoop(long webId, CList<long, long>& spanIds) const;
    // Whether one span lies on the way down from the other: `otherSpanId` below `spanId`, with direction 1 the other
    // way round.
    bool CheckLinkSpan(long spanId, long otherSpanId, int direction) const;
    // The layouts of a profile arrangement on a page, from 1, whose spans are linked; `layouts` is emptied first.
    // `sort`: rising by "ploutstpos", equal within 1e-5.
    bool GetProfilelayoutIdList(unsigned long arrangementId, int page, bool sort,
                                CArray<const CProfilelayout*>& layouts) const;
    // True for two records of one code or name, empty ones included; the id is that of the later one of the first pair.
    bool CheckManHoleCode(long& id) const;
    bool CheckSection(long& id) const;
    bool CheckSectGroupName(long& id) const;
    bool CheckSectGroupName(long& id, CString& name) const;
    // The names of all pipe sections, kind by kind: pipes, open boxes, closed boxes, U-shapes, eggs.
    bool CheckAllPipeName(long& id, long& otherId) const;
    void GetAllSectName(CList<tagSeekSect, const tagSeekSect&>& names) const;
    // Whether a span of the web has the calculation style. False for a web without an order of spans.
    bool IsUsedFunctionName(long webId, const CString& name) const;
    // Remove section groups without a name and all but the first of a name, and number the records of the rest anew;
    // remove all but the first of equal group records. `names` is emptied and gets the names, or the section keys,
    // each once. True when something was removed.
    bool DuplicateCheckSecgroup(CStringArray& names);
    bool DuplicateCheckSecgrouprec(CStringArray& names);

    // ---- Ground lines (integrity/GroundLines.cpp, integrity/GroundChanges.cpp) ----
    // Two ground lines: type 0 planned, 1 existing. Levels and distances in metres.
    // Places the ground changes of a web on its spans ("glspanid", "gldist", "glelev") from what was entered. A record
    // beyond its route gets span 0. With `setLevel` entered elevations are taken over; relative ones always are. False
    // when there is no route, and at a route with records but no order of spans.
    bool update_GlChange(long webId, bool setLevel);
    // The ground level at a distance from the upper end of a span, to 3 decimals. Mode 0 goes by the span ends alone,
    // 1 also by ground changes with an elevation, others by all of them. 0 for an unknown span.
    double get_PosGl(long spanId, int type, double dist, int mode) const;
    // Gives the spans of a stretch, from the top down, levels on a straight line from the first span's to the node's,
    // or without a node to the last span's. False for a stretch shorter than 1e-10. Raises CInvalidArgException for an
    // empty list.
    bool SupplementGl(CList<long, long>& spanIds, long* lowerNodeId);
    // Along the span from its upper end, within 1e-5 m by "order".
    void SortGLChange(CTypedPtrArray<CObArray, CGlChange*>& records) const;
    void SortGLChange(CTypedPtrList<CObList, CGlChange*>& records) const;
    // Both empty the target first.
    void GLChangeArrayToList(const CTypedPtrArray<CObArray, CGlChange*>& from,
                             CTypedPtrList<CObList, CGlChange*>& to) const;
    void GLChangeListToArray(const CTypedPtrList<CObList, CGlChange*>& from,
                             CTypedPtrArray<CObArray, CGlChange*>& to) const;
    // The ground changes of one line that lie on a span, placed or not; the list is emptied first. `spans` are those of
    // the route in flow order, null for all. Sets status bit 1 of a record whose span number is beyond the route, bit 2
    // of one whose distance is.
    bool GetAllGlChangeObjectArrayFromSpan(const CSpan* span, CTypedPtrArray<CObArray, CGlChange*>& records,
                                           CList<const CSpan*>* spans, bool sort, int type) const;
    bool GetAllGlChangeObjectArrayFromSpan(unsigned long spanId, CTypedPtrArray<CObArray, CGlChange*>& records,
                                           CList<const CSpan*>* spans, bool sort, int type) const;
    bool GetAllGlChangeObjectListFromSpan(const CSpan* span, CTypedPtrList<CObList, CGlChange*>& records,
                                          CList<const CSpan*>* spans, bool sort, int type) const;
    bool GetAllGlChangeObjectListFromSpan(unsigned long spanId, CTypedPtrList<CObList, CGlChange*>& records,
                                          CList<const CSpan*>* spans, bool sort, int type) const;
    // The span at a distance from the upper end of a route, or with `dir` not 0 from the lower end. False, with the
    // last span, beyond the route. Raises CInvalidArgException without spans. The last argument is not used.
    bool GetSpanFromDistAndDir(unsigned long routeId, double dist, int dir, unsigned long* spanId,
                               CList<const CSpan*>* spans, double* last) const;
    // Gives all spans of a route the same whole length; the last one gets what is left over.
    bool SpanEqualityLength(long routeId);

    // ---- Crossings and laterals (integrity/Placement.cpp, integrity/CrossingLevels.cpp) ----
    // Place crossing points, laterals and vacuum joints on the spans of a web, as update_GlChange does, and with
    // `setLevel` level each at once. The last flag has no effect.
    bool update_IntPos(long webId, bool setLevel);
    bool update_Lateral(long webId, bool setLevel);
    bool update_Vjoint(long webId, bool flag);
    // The level of a placed record from its height standard and its section. True when the level was written.
    bool update_IntPosLevel(long intPosId);
    bool update_LateralLevel(long lateralId);
    // Dimensions of the pipe section with the name, metres; all 0 and false when there is none.
    bool get_sectinfo(const wchar_t* name, long& id, CString& kind, double& outerWidth, double& upperHeight,
                      double& bottomThickness, double& innerHeight, double& topThickness,
                      double& bottomThickness2) const;
    // The route, crossing and span that a crossing point lies on; each pointer may be null and gets 0 for none.
    bool GetIdFromIntpos(long intPosId, long* routeId, long* crossingId, long* spanId) const;

    // The table of a type, untyped.
    obmgr::ObjectTable& TableOf(objectdata::OBJECTTYPE type);
    const obmgr::ObjectTable& TableOf(objectdata::OBJECTTYPE type) const;

protected:
    long IssueObjectId();
    void SetObjectId(long id);
    // The greatest id among all live objects; 0 when none.
    long GetMaxObjectId() const;
    // The project's default calculation method for a kind: 0 sanitary, 1 agricultural, 2 storm, 3 combined,
    // 4 vacuum sanitary, 5 vacuum agricultural. Raises CInvalidArgException when there is no project.
    CString GetDefFunctionName(int kind) const;
    // The span that ends at the route's lowest node.
    bool GetLastSpanFromRoute(long routeId, long& spanId) const;
    // Turns a route end for end: node ids, end coordinates, the side of arcs; "spno" runs from the new upper end.
    void ReverseSpanInRoute(long routeId);
    // Appends the routes upstream of `routeId`, 0 for the whole web, each before its tributaries, those by "floworder".
    void GetConnectRouteSortOrder(long webId, long routeId, CTypedPtrList<CObList, CRoute*>& routes) const;
    // Carries everything upstream of a route to a web.
    void SetUpperRouteObject(long routeId, long webId);
    bool IsIdContain(long id, const CList<long, long>& list) const;
    double GetDistancePtPt(double x1, double y1, double z1, double x2, double y2, double z2) const;
    // True when all web names differ; else the later web of the first equal pair.
    bool CheckDuplicateWebName(CWeb** duplicate) const;

private:
    friend class SAXHandlers;
    friend class CSaxParser;

    // Bodies of the families (store/FamilyBodies.h).
    template <class T, class... Link>
    T* CreateIn(CObjectDataBase<T>& table, const CArray<CKeyValue, CKeyValue>& values, Link... links);
    template <class T> unsigned long CreateFromMap(CObjectDataBase<T>& table, const CMapStringToString& values);
    template <class T, class... Link> T* AddNew(CObjectDataBase<T>& table, CMapStringToString& defaults, Link... links);
    bool DeleteByText(obmgr::ObjectTable& table, const wchar_t* key, const CString& text);
    bool DeleteByNumber(obmgr::ObjectTable& table, const wchar_t* key, long number);
    bool DeleteOwned(obmgr::ObjectTable& table, long ownerId);
    bool DeleteRouteRecords(obmgr::ObjectTable& table, long routeId);
    bool DeleteRecordsOfRoute(long routeId, bool keepCrossings);
    bool DeleteCrossingPoints(long routeId, bool keepCrossings);
    bool DeleteSpansOfRoute(long routeId);
    bool DeleteWeb(long webId, bool keepCrossings);
    bool DeleteWithVelocities(obmgr::ObjectTable& methods, const wchar_t* nameKey, long id);

    // Shared steps of the network.
    template <class T> T* CopyInto(CObjectDataBase<T>& table, const T& source, long& newId);
    template <class T> bool CopySettings(CObjectDataBase<T>& table, long webId, long newWebId);
    // ChangeConnectRoute without what is upstream of the route.
    bool HangRoute(CRoute& route, long connectId, long newWebId);
    void WriteDefaultCalcStyle(CSpan& span, long webId);
    CSpan* CreateSpanTo(const CNode& node, CSpan& span, const CArray<CKeyValue, CKeyValue>& values, bool below,
                        long* newId);
    CSpan* CreateSpanBeside(CSpan& span, const CArray<CKeyValue, CKeyValue>& values, bool below, long* newId);
    CSpan* CreateNumberedSpan(CSpan& span, const CArray<CKeyValue, CKeyValue>& values, bool below, int number,
                              long* newSpanId, long* newNodeId);
    template <class Use> bool ExtendLine(CSpan* current, unsigned count, Use&& use);
    template <class Use> void ForMeantRoutes(long webId, Use&& use) const;
    // In table order; the second one is false when a span without a live route ended the list.
    std::vector<obmgr::PositionMap::Entry> SpansOfWeb(long webId) const;
    bool CollectSpanFromWeb(long webId, std::vector<obmgr::PositionMap::Entry>& found) const;
    template <class Routes, class Use> bool WalkRoutes(const Routes& routes, Use&& use) const;
    bool FollowGreatest(long webId, const wchar_t* key, CList<long, long>& out) const;
    bool SortByBranches(const CList<long, long>& in, CList<long, long>& out, bool fromBelow,
                        void (obmgr::BranchRun::*take)(std::size_t)) const;
    bool MeasureLines(obmgr::BranchRun& run, std::size_t line, CList<long, long>& measured);
    template <class Element>
    int TakeConnected(CArray<Element*>& routes, long routeId, bool recursive, bool sort, CArray<Element*>& out) const;
    // Records in table order: with a route of the web as owner, with a span of it under the key, and the like.
    std::vector<CPipeObject*> OnRoutesOfWeb(const obmgr::ObjectTable& table, long webId) const;
    std::vector<CPipeObject*> OnSpansOfWeb(const obmgr::ObjectTable& table, const wchar_t* key, long webId) const;
    std::vector<CPipeObject*> AtNodesOfWeb(long webId) const;
    std::vector<CPipeObject*> PointsOfWeb(long webId) const;
    std::vector<CPipeObject*> CrossingsOfWeb(long webId) const;

#define OBM_RECORD(T, ...) CObjectDataBase<C##T> m_##T;
#include "objects/ObjectTypes.def"
    // Route ids that a span may have without such a route being there; node ids that no span may touch.
    mutable obmgr::TouchedIds m_touchedRoutes;
    mutable obmgr::TouchedIds m_touchedNodes;
    CTypedPtrList<CObList, CPipeObject*> m_savedRead; // not owned
    bool m_isRecording = false;
    bool m_isReading = false;
    CFileProfile m_fileProfile;
    long m_lastObjectId = 0;
    CList<long, long> m_idStack; // the last id at the outermost begin
    unsigned m_transactionNesting = 0;
    CString m_currentFilePath;
    CString m_registryKey;
};
