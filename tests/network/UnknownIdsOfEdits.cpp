// Rows of construction, deletion and copying.

#include "network/UnknownIds.h"

using enum objectdata::OBJECTTYPE;
using support::Spans;

namespace unknown_ids {

std::vector<Row> constructionRows()
{
    return {
        {"CreateSpanNodeShort", Span,
         [](Manager& m, const Others&, long id) {
             long made = -77;
             return !m.CreateSpanNode(id, {}, &made, true) && !m.CreateSpanNode(id, {}, &made, false) && made == -77;
         }},
        {"CreateSpanNodeLong", Span,
         [](Manager& m, const Others&, long id) {
             long span = -77;
             long node = -77;
             return !m.CreateSpanNode(id, {}, &span, &node, true) && !m.CreateSpanNode(id, {}, &span, &node, false) &&
                    span == -77 && node == -77;
         }},
        mayChange({"CreateRouteSpanNodeWeb", Web,
                   [](Manager& m, const Others&, long id) {
                       CSpan* span = nullptr;
                       m.CreateRouteSpanNode(id, 0, {}, span);
                       return true;
                   }}),
        zeroIsValid({"CreateRouteSpanNodeConnect", Route,
                     [](Manager& m, const Others& o, long id) {
                         CSpan* span = nullptr;
                         return m.CreateRouteSpanNode(o.web, id, {}, span) == nullptr;
                     }}),
        {"CreateMultiSpanNode", Route,
         [](Manager& m, const Others&, long id) {
             Ids spans;
             Ids nodes;
             return !m.CreateMultiSpanNode(id, {}, 1, spans, nodes) && spans.IsEmpty() && nodes.IsEmpty();
         }},
        {"AddSpan", Route,
         [](Manager& m, const Others&, long id) {
             Ids ids;
             Spans spans;
             return !m.AddSpan(id, 1, ids) && !m.AddSpan(id, 1, spans) && ids.IsEmpty() && spans.IsEmpty();
         }},
        {"InsertSpan", Span,
         [](Manager& m, const Others& o, long id) {
             Ids ids;
             Spans spans;
             return !m.InsertSpan(o.route, id, 1, ids) && !m.InsertSpan(o.route, id, 1, spans) && ids.IsEmpty() &&
                    spans.IsEmpty();
         }},
        {"DivideSpan", Span,
         [](Manager& m, const Others&, long id) {
             Ids ids;
             return !m.DivideSpan(id, 1, ids) && !m.DivideSpan(id, 3, ids);
         }},
        {"RemoveSpan", Route,
         [](Manager& m, const Others&, long id) {
             Spans spans;
             return !m.RemoveSpan(id, 0) && !m.RemoveSpan(id, 1) && !m.RemoveSpan(id, 1, spans) && spans.IsEmpty();
         }},
    };
}

std::vector<Row> deletionRows()
{
    return {
        deletes("DeleteNodeObject", Node, &M::DeleteNodeObject),
        deletesNone("DeleteIcpInqByNode", Node, &M::DeleteIcpInqByNode),
        {"ConnectSpan", Span,
         [](Manager& m, const Others& o, long id) {
             return !m.ConnectSpan(id, o.span) && !m.ConnectSpan(o.span, id) && !m.ConnectSpan(id, id);
         }},
        deletesWith("DeleteSpanObject", Span, &M::DeleteSpanObject),
        deletes("DeleteSpanObjectOnly", Span, &M::DeleteSpanObjectOnly),
        deletes("DeleteSpanAreaset", Span, &M::DeleteSpanAreaset),
        deletes("DeleteSpanAreatset", Span, &M::DeleteSpanAreatset),
        deletesNone("DeleteSpanSpdxfin", Span, &M::DeleteSpanSpdxfin),
        deletesNone("DeleteSpanDrawbelttx", Span, &M::DeleteSpanDrawbelttx),
        deletesWith("DeleteRouteObject", Route, &M::DeleteRouteObject),
        deletes("DeleteRouteObjectConnectEnd", Route, &M::DeleteRouteObjectConnectEnd),
        deletesWith("DeleteRouteObjectUpperAll", Route, &M::DeleteRouteObjectUpperAll),
        {"DeleteRouteObjectListAllWeb", Web,
         [](Manager& m, const Others& o, long id) { return !m.DeleteRouteObjectListAll(id, Ids{o.route}); }},
        {"DeleteRouteObjectListAll", Route,
         [](Manager& m, const Others& o, long id) { return m.DeleteRouteObjectListAll(o.web, Ids{id}) == o.exist; }},
        deletes("DeleteWebObject", Web, &M::DeleteWebObject),
        deletes("DeleteWebObjectForQ7Export", Web, &M::DeleteWebObjectForQ7Export),
        deletesNone("DeleteIntersAndPointByRoute", Route, &M::DeleteIntersAndPointByRoute),
        deletesNone("DeleteIntersAndPointByRouteForQ7Export", Route, &M::DeleteIntersAndPointByRouteForQ7Export),
        deletesNone("DeleteGlchangeByRoute", Route, &M::DeleteGlchangeByRoute),
        deletesNone("DeleteLateralByRoute", Route, &M::DeleteLateralByRoute),
        deletesNone("DeleteVjointByRoute", Route, &M::DeleteVjointByRoute),
        deletesNone("DeleteAreaInqByRoute", Route, &M::DeleteAreaInqByRoute),
        deletesNone("DeleteAreaOutqByRoute", Route, &M::DeleteAreaOutqByRoute),
        deletesNone("DeleteFixInqByRoute", Route, &M::DeleteFixInqByRoute),
        deletesNone("DeleteMountInqByRoute", Route, &M::DeleteMountInqByRoute),
        deletesNone("DeleteOutqByRoute", Route, &M::DeleteOutqByRoute),
        deletes("DeleteAreaInqObject", AreaInq, &M::DeleteAreaInqObject),
        deletes("DeleteAreaOutqObject", AreaOutq, &M::DeleteAreaOutqObject),
        deletes("DeleteAreaInqInareaset", AreaInq, &M::DeleteAreaInqInareaset),
        deletes("DeleteAreaOutqOutareaset", AreaOutq, &M::DeleteAreaOutqOutareaset),
    };
}

std::vector<Row> copyRows()
{
    return {
        {"CopyNodeObject", Node,
         [](Manager& m, const Others&, long id) {
             long copy = 0;
             return !m.CopyNodeObject(id, copy);
         }},
        {"CopyAreaInqObject", AreaInq,
         [](Manager& m, const Others&, long id) {
             long copy = -77;
             return m.CopyAreaInqObject(id, copy) && copy == -77;
         }},
        {"CopySpanObject", Span,
         [](Manager& m, const Others& o, long id) {
             long copy = 0;
             return !m.CopySpanObject(id, 0, copy) && !m.CopySpanObject(id, o.node, copy);
         }},
        {"CopyAreasetObjectFromSpan", Span,
         [](Manager& m, const Others& o, long id) { return !m.CopyAreasetObjectFromSpan(id, o.span); }},
        {"CopyRouteObject", Route,
         [](Manager& m, const Others& o, long id) {
             long copy = 0;
             return !m.CopyRouteObject(id, 0, copy) && !m.CopyRouteObject(id, o.route, copy);
         }},
        zeroIsValid({"CopyRouteObjectConnect", Route,
                     [](Manager& m, const Others& o, long id) {
                         long copy = 0;
                         return !m.CopyRouteObject(o.route, id, copy);
                     }}),
        {"CopyAllUpperRouteObject", Route,
         [](Manager& m, const Others& o, long id) {
             Ids copies;
             return !m.CopyAllUpperRouteObject(id, o.route, copies) &&
                    !m.CopyAllUpperRouteObjectSub(id, o.route, copies) && copies.IsEmpty();
         }},
        zeroIsValid({"CopyAllUpperRouteObjectConnect", Route,
                     [](Manager& m, const Others& o, long id) {
                         Ids copies;
                         return !m.CopyAllUpperRouteObject(o.route, id, copies) &&
                                !m.CopyAllUpperRouteObjectSub(o.route, id, copies) && copies.IsEmpty();
                     }}),
        {"CopyWebObject", Web,
         [](Manager& m, const Others&, long id) {
             long copy = 0;
             return !m.CopyWebObject(id, copy);
         }},
    };
}

} // namespace unknown_ids
