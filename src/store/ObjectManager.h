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

class CObDefManager;
class CStdioFile;
class OrnSaxParser;

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

    // ---- Network construction (network/NetworkConstruction.cpp) ----
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
    // Rising by the coefficient number, equal ones in their order; ids without an object are dropped.
    void SortInareasetIdList(CList<long, long>& ids) const;
    void SortOutareasetIdList(CList<long, long>& ids) const;
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
    bool DeleteWithVelocities(obmgr::ObjectTable& methods, const wchar_t* nameKey, long id);

#define OBM_RECORD(T, ...) CObjectDataBase<C##T> m_##T;
#include "objects/ObjectTypes.def"
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
