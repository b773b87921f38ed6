#include "server/desk.h"

#include <charconv>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

#include "server/desk_batch.h"
#include "session/charge_curve.h"
#include "session/look_up_documents.h"
#include "session/profile_list.h"
#include "shipment/json_document.h"
#include "shipment/shipment_json.h"
#include "shipment/spelling.h"
#include "text/json_writer.h"

namespace cwt {
namespace {

constexpr int kNoRequestCode = 0;

/// A term, or another text where it was not given.
std::string TermOr(const DeskRequest& request, const char* name, const char* otherwise) {
    const auto found = request.terms.find(name);
    return found == request.terms.end() ? otherwise : found->second;
}

DeskReply Reply(std::string document) {
    DeskReply reply;
    reply.body = std::move(document);
    return reply;
}

DeskReply Refused(const Refusals& refusals, const std::string& id = {}) {
    return ProblemReply(ProblemKind::kRefused, ReasonOf(refusals),
                        {.id = id, .refusals = refusals});
}

DeskReply RefusedShipment(const Refusals& refusals, const std::string& id) {
    DeskReply reply = Refused(refusals, id);
    Row row;
    row.outcome = refusals;
    reply.tally.Count(row);
    return reply;
}

/// The answer to a shipment that is rated, and what `document` makes of its bill.
template <class Document>
DeskReply Rated(const Bill& bill, Document document) {
    DeskReply reply = Reply(document(bill));
    Row row;
    row.outcome = bill;
    reply.tally.Count(row);
    return reply;
}

DeskReply AnswerRate(Session& session, const Shipment& shipment, const DeskRequest& request) {
    const std::string explain = TermOr(request, "explain", "0");
    if (explain != "0" && explain != "1") {
        return ProblemReply(ProblemKind::kBadRequest, "explain: 0 or 1");
    }
    if (explain == "0") {
        const Outcome outcome = session.Rate(shipment, kNoRequestCode);
        if (const auto* bill = std::get_if<Bill>(&outcome)) return Rated(*bill, BillDocument);
        return RefusedShipment(std::get<Refusals>(outcome), shipment.id);
    }
    const ExplainedOutcome outcome = session.Explain(shipment, kNoRequestCode);
    if (const auto* refusals = std::get_if<Refusals>(&outcome)) {
        return RefusedShipment(*refusals, shipment.id);
    }
    const auto& explained = std::get<ExplainedBill>(outcome);
    return Rated(explained.bill, [&](const Bill& bill) {
        return ExplanationDocument(bill, explained.explanation);
    });
}

DeskReply AnswerCheck(Session& session, const Shipment& shipment, const DeskRequest& /*request*/) {
    const Outcome outcome = session.Rate(shipment, kNoRequestCode);
    if (const auto* bill = std::get_if<Bill>(&outcome)) return Rated(*bill, CheckDocument);
    return RefusedShipment(std::get<Refusals>(outcome), shipment.id);
}

/// A weight of a curve's range; 0 for what is none.
int WeightOf(const std::string& text) {
    int weight = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), weight);
    const bool whole = end.ec == std::errc() && end.ptr == text.data() + text.size();
    return whole && weight >= 1 && weight <= kHighestCurveWeight ? weight : 0;
}

DeskReply AnswerCurve(Session& session, const Shipment& shipment, const DeskRequest& request) {
    const WeightRange range = {WeightOf(TermOr(request, "from", "1")),
                               WeightOf(TermOr(request, "to", "20000"))};
    if (range.from == 0 || range.to < range.from) {
        return ProblemReply(ProblemKind::kBadRequest,
                            "from and to: whole pounds from 1 to 999999, the lower one first");
    }
    const CurveOutcome outcome = DrawCurve(session, shipment, range);
    if (const auto* curve = std::get_if<ChargeCurve>(&outcome)) return Reply(CurveDocument(*curve));
    return RefusedShipment(std::get<Refusals>(outcome), shipment.id);
}

DeskReply AnswerState(Session& session, const DeskRequest& request) {
    const std::string postal_code = SpellPostalCode(TermOr(request, "code", ""));
    const StateAnswer answer = session.StateOf(postal_code);
    if (!answer.refusals.empty()) return Refused(answer.refusals);
    return Reply(StatesDocument({{postal_code, answer.state}}, {}));
}

DeskReply AnswerCities(Session& session, const DeskRequest& request) {
    const std::string postal_code = SpellPostalCode(TermOr(request, "code", ""));
    const CitiesAnswer answer = session.CitiesAt(postal_code);
    if (!answer.refusals.empty()) return Refused(answer.refusals);
    return Reply(CitiesDocument(postal_code, answer.cities));
}

DeskReply AnswerClasses(Session& session, const DeskRequest& request) {
    const auto tariff = request.terms.find("tariff");
    const TablesAnswer answer = session.TablesOf(
        tariff == request.terms.end() ? std::nullopt : std::optional(tariff->second));
    if (!answer.refusals.empty()) return Refused(answer.refusals);
    return Reply(ClassesDocument(answer));
}

DeskReply AnswerProfiles(Session& session, const DeskRequest& /*request*/) {
    return Reply(ProfilesDocument(session.ProfileNames()));
}

DeskReply AnswerProfile(Session& session, const DeskRequest& request) {
    const Refusals refusals = session.LoadProfile(TermOr(request, "name", ""));
    if (refusals.empty()) return Reply(DocumentOf(ProfileJson(session.context())));
    return ProblemReply(ProblemKind::kUnknownProfile, ReasonOf(refusals),
                        {.alternatives = refusals.front().alternatives});
}

/// Answers of what the shipment in the body comes to.
template <DeskReply (*kAnswer)(Session&, const Shipment&, const DeskRequest&)>
DeskReply OfShipment(Session& session, const DeskRequest& request) {
    Refusals refusals;
    const nlohmann::json json = ParseJson(request.body, refusals);
    if (!json.is_object()) {
        if (refusals.empty()) refusals = {{"", "a JSON object is wanted"}};
        return ProblemReply(ProblemKind::kNotAShipment, ReasonOf(refusals), {.refusals = refusals});
    }
    Shipment shipment;
    ReadShipment(json, shipment, refusals);
    if (!refusals.empty()) return RefusedShipment(refusals, shipment.id);
    return kAnswer(session, shipment, request);
}

struct Route {
    const char* name;
    DeskReply (*answer)(Session&, const DeskRequest&);
};

constexpr Route kRoutes[] = {
    {"rate", OfShipment<AnswerRate>},
    {"check", OfShipment<AnswerCheck>},
    {"curve", OfShipment<AnswerCurve>},
    {"batch", AnswerBatch},
    {"state", AnswerState},
    {"cities", AnswerCities},
    {"classes", AnswerClasses},
    {"profiles", AnswerProfiles},
    {"profile", AnswerProfile},
};

}  // namespace

DeskReply ProblemReply(ProblemKind kind, const std::string& detail, const ProblemMembers& members) {
    return {StatusOf(kind), kProblemType, ProblemDocument(kind, detail, members), {}};
}

DeskReply AnswerRequest(Session& session, const DeskRequest& request) {
    for (const Route& route : kRoutes) {
        if (request.route == route.name) return route.answer(session, request);
    }
    throw std::logic_error("no route " + request.route);
}

}  // namespace cwt
