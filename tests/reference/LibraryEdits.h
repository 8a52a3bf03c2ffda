// The library's edits and sorts with the signatures of the model's, so that a step is written once for both: overloads
// that take the library where the model's functions take the network.
#pragma once

#include "reference/LibrarySide.h"
#include "reference/NetworkEdits.h"
#include "reference/NetworkSorts.h"

namespace reference {

// ---- construction ----
bool CreateSpanNode(OpenNetwork& library, int spanId, const Values& values, int* newSpanId, bool below);
bool CreateSpanNode(OpenNetwork& library, int spanId, const Values& values, int* newSpanId, int* newNodeId, bool below);
CRoute* CreateRouteSpanNode(OpenNetwork& library, int webId, int connectId, const Values& values, CSpan*& span);
bool CreateMultiSpanNode(OpenNetwork& library, int routeId, const Values& values, int count, Ids& spanIds,
                         Ids& nodeIds);
bool AddSpan(OpenNetwork& library, int routeId, unsigned count, Ids& spanIds);
bool InsertSpan(OpenNetwork& library, int routeId, int spanId, unsigned count, Ids& spanIds);
bool DivideSpan(OpenNetwork& library, int spanId, unsigned parts, Ids& spanIds);
bool RemoveSpan(OpenNetwork& library, int routeId, unsigned count, Objects& removed);

// ---- rewiring, flow ends ----
bool ConnectRoute(OpenNetwork& library, int routeId, int connectId);
bool ChangeConnectRoute(OpenNetwork& library, int routeId, int connectId, int oldWebId, int newWebId);
void UpdateConnectRouteNum(OpenNetwork& library, int webId);
void ReverseSpanInRoute(OpenNetwork& library, int routeId);
void SetUpperRouteObject(OpenNetwork& library, int routeId, int webId);
void UpdateManHoleNumSameRouteNum(OpenNetwork& library, int routeId, std::vector<std::wstring>& oldNumbers,
                                  std::vector<std::wstring>& newNumbers, bool lowestFirst);
bool ReSetFlowEndNode(OpenNetwork& library, int routeId, const std::wstring& name);
bool ReSetFlowEndNodeByNode(OpenNetwork& library, int routeId, int nodeId, const std::wstring& name, Ids& rewired,
                            Ids& reversed);
void ReSetRouteSortOrder(OpenNetwork& library, int webId, int connectId);
bool ReleaseDivideNode(OpenNetwork& library, int ownerId, Ids& nodeIds);

// ---- deletion and copying ----
bool ConnectSpan(OpenNetwork& library, int firstSpanId, int secondSpanId);
bool DeleteRouteObjectListAll(OpenNetwork& library, int webId, const Ids& routeIds);
bool CopyNodeObject(OpenNetwork& library, int nodeId, int& newId);
bool CopySpanObject(OpenNetwork& library, int spanId, int lowerNodeId, int& newId);
bool CopyAreasetObjectFromSpan(OpenNetwork& library, int fromSpanId, int toSpanId);
bool CopyRouteObject(OpenNetwork& library, int routeId, int connectId, int& newId);
bool CopyAllUpperRouteObject(OpenNetwork& library, int routeId, int connectId, Ids& newIds);
bool CopyWebObject(OpenNetwork& library, int webId, int& newId);

// ---- steps ----

// A step from one function for both sides: step(library or network, arguments, outcome).
template <class Step> StepKind MakeStep(const char* name, int weight, std::function<Args(Choice&)> choose, Step step)
{
    return {name, weight, std::move(choose),
            [step](OpenNetwork& library, const Args& args, Outcome& outcome) {
                Unpack in(args);
                step(library, in, outcome);
            },
            [step](Network& model, const Args& args, Outcome& outcome) {
                Unpack in(args);
                step(model, in, outcome);
            }};
}

} // namespace reference
