// A network with an object of every family that labels can be about.
#pragma once

#include "support/Networks.h"

#include <stdexcept>

namespace macros {

using objectdata::OBJECTTYPE;

// The families that items and arguments find alike.
inline constexpr OBJECTTYPE kLabelledTypes[] = {
    objectdata::Web,     objectdata::Route,   objectdata::Span,   objectdata::Node,     objectdata::IntPos,
    objectdata::Lateral, objectdata::AreaInq, objectdata::FixInq, objectdata::MountInq, objectdata::Outq,
};

// An id that none of the objects here has.
inline constexpr unsigned long kUnknownId = 987654;

struct LabelledNetwork : support::Network {
    LabelledNetwork() : Network("W: M = a-b-c") {}

    // The id of an object of the type, made now unless the network itself has one.
    unsigned long IdOf(OBJECTTYPE type) { return Get(type)->GetObjectId(); }

private:
    CPipeObject* Get(OBJECTTYPE type)
    {
        const support::Network& net = *this;
        const long route = net["M"];
        switch (type) {
        case objectdata::Web: return &net.Web("W");
        case objectdata::Route: return &net.Route("M");
        case objectdata::Span: return &net.Span("a-b");
        case objectdata::Node: return &net.Node("b");
        case objectdata::Project: return manager.CreateProject({});
        case objectdata::IntPos: return manager.CreateIntPos(route, 0, {});
        case objectdata::Lateral: return manager.CreateLateral(route, {});
        case objectdata::AreaInq: return manager.CreateAreaInq(route, {});
        case objectdata::FixInq: return manager.CreateFixInq(route, {});
        case objectdata::MountInq: return manager.CreateMountInq(route, {});
        case objectdata::Outq: return manager.CreateOutq(route, {});
        case objectdata::Section: return manager.CreateSection(0, {});
        case objectdata::Drawformdat: return manager.CreateDrawformdat(support::Values());
        case objectdata::Profilelayout: return manager.CreateProfilelayout(0, {});
        case objectdata::ManHole: return manager.CreateManHole({});
        default: throw std::invalid_argument("no object of this type here");
        }
    }
};

} // namespace macros
