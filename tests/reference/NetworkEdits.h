// The edits of the sewer network as their contract tells them, step by step over the records of the model. Names and
// arguments are the library's; an id result is written where the library writes it, and lists are appended to.
//
// The files: ConstructionEdits.cpp, RewiringEdits.cpp, DeletionEdits.cpp, CopyEdits.cpp. The steps for the random
// scripts that run each edit on the library and on the model are in NetworkEditKinds.cpp.
#pragma once

#include "reference/Network.h"
#include "reference/NetworkScript.h"

namespace reference {

// ---- construction ----
bool CreateNode(Network& net, const Values& values, int* newId);
bool CreateRoute(Network& net, int webId, int connectId, const Values& values, int* newId);
bool CreateWeb(Network& net, int disposalType, const Values& values, int* newId);
bool CreateSpan(Network& net, int upperNodeId, int lowerNodeId, int routeId, const Values& values, int* newId);
bool CreateSpanNoarea(Network& net, int upperNodeId, int lowerNodeId, int routeId, const Values& values, int* newId);
bool CreateSpanNode(Network& net, int spanId, const Values& values, int* newSpanId, bool below);
bool CreateSpanNode(Network& net, int spanId, const Values& values, int* newSpanId, int* newNodeId, bool below);
Record* CreateRouteSpanNode(Network& net, int webId, int connectId, const Values& values, Record*& span);
bool CreateMultiSpanNode(Network& net, int routeId, const Values& values, int count, Ids& spanIds, Ids& nodeIds);
bool AddSpan(Network& net, int routeId, unsigned count, Ids& spanIds);
bool InsertSpan(Network& net, int routeId, int spanId, unsigned count, Ids& spanIds);
bool DivideSpan(Network& net, int spanId, unsigned parts, Ids& spanIds);
bool RemoveSpan(Network& net, int routeId, unsigned count, Records& removed);

// ---- rewiring, flow ends ----
bool ConnectRoute(Network& net, int routeId, int connectId);
bool ChangeConnectRoute(Network& net, int routeId, int connectId, int oldWebId, int newWebId);
void UpdateConnectRouteNum(Network& net, int webId);
void ReverseSpanInRoute(Network& net, int routeId);
void SetUpperRouteObject(Network& net, int routeId, int webId);
void UpdateManHoleNumSameRouteNum(Network& net, int routeId, std::vector<std::wstring>& oldNumbers,
                                  std::vector<std::wstring>& newNumbers, bool lowestFirst);
bool ReSetFlowEndNode(Network& net, int routeId, const std::wstring& name);
bool ReSetFlowEndNodeByNode(Network& net, int routeId, int nodeId, const std::wstring& name, Ids& rewired,
                            Ids& reversed);
void ReSetRouteSortOrder(Network& net, int webId, int connectId);
bool ReleaseDivideNode(Network& net, int ownerId, Ids& nodeIds);

// ---- deletion ----
bool DeleteNodeObject(Network& net, int nodeId);
bool DeleteIcpInqByNode(Network& net, int nodeId);
bool ConnectSpan(Network& net, int firstSpanId, int secondSpanId);
bool DeleteSpanObject(Network& net, int spanId, bool leaveRoute);
bool DeleteSpanObjectOnly(Network& net, int spanId);
bool DeleteRouteObject(Network& net, int routeId, bool spansGone);
bool DeleteRouteObjectConnectEnd(Network& net, int routeId);
bool DeleteRouteObjectUpperAll(Network& net, int routeId);
bool DeleteRouteObjectListAll(Network& net, int webId, const Ids& routeIds);
bool DeleteWebObject(Network& net, int webId);
bool DeleteWebObjectForQ7Export(Network& net, int webId);
bool DeleteIntersAndPointByRoute(Network& net, int routeId);
bool DeleteIntersAndPointByRouteForQ7Export(Network& net, int routeId);
// Delete<T>ByRoute for the types that hang on a route by their first link.
bool DeleteByRoute(Network& net, Type type, int routeId);
bool DeleteSpanAreaset(Network& net, int spanId);
bool DeleteSpanAreatset(Network& net, int spanId);
bool DeleteSpanSpdxfin(Network& net, int spanId);
bool DeleteSpanDrawbelttx(Network& net, int spanId);
bool DeleteAreaInqInareaset(Network& net, int areaInqId);
bool DeleteAreaOutqOutareaset(Network& net, int areaOutqId);

// ---- copying ----
bool CopyNodeObject(Network& net, int nodeId, int& newId);
bool CopySpanObject(Network& net, int spanId, int lowerNodeId, int& newId);
bool CopyAreasetObjectFromSpan(Network& net, int fromSpanId, int toSpanId);
bool CopyRouteObject(Network& net, int routeId, int connectId, int& newId);
bool CopyAllUpperRouteObject(Network& net, int routeId, int connectId, Ids& newIds);
bool CopyWebObject(Network& net, int webId, int& newId);

// Every edit, ready for the driver.
std::vector<StepKind> NetworkEdits();

} // namespace reference
