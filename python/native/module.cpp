// What the Python package asks of the host.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <tuple>
#include <utility>

#include "batch/data_watch.h"
#include "batch/rater.h"
#include "batch/verdict.h"
#include "frame_rows.h"
#include "one_session.h"
#include "other_threads.h"
#include "row_columns.h"
#include "session/messages.h"
#include "shipment/shipment_columns.h"
#include "shipment/shipment_json.h"
#include "text/code_page.h"
#include "text/path_text.h"

namespace {

namespace py = pybind11;
using namespace cwt;

constexpr int kNoRequestCode = 0;

/// A document, and a text for people; whether it is of a bill.
using Answer3 = std::tuple<bool, std::string, std::string>;

Sources SourcesOf(const std::string& data, const std::string& set, const std::string& engine,
                  const std::string& service_guide) {
    Sources sources{{}, set, engine, service_guide};
    sources.data = FindDataDirectory(PathOf(data), ".", set);
    return Fixed(sources);
}

Answer3 Refuse(const Refusals& refusals, const std::string& id) {
    return {false, RefusalsJson(refusals, id).dump(), ReasonOf(refusals)};
}

Answer3 AnswerOf(const Bill& bill) {
    return {true, BillDocument(bill), BillText(bill)};
}

Answer3 AnswerOf(const ExplainedBill& explained) {
    const auto& [bill, explanation] = explained;
    return {true, ExplanationDocument(bill, explanation), ExplanationText(explanation)};
}

/// What a session makes of a shipment, a bill alone or with its explanation.
template <auto kRate>
Answer3 Rate(OneSession& one, const std::string& text) {
    return one.Use([&](Session& session) {
        Shipment shipment;
        const Refusals refusals = ReadShipmentJson(text, shipment);
        if (!refusals.empty()) return Refuse(refusals, shipment.id);
        const auto outcome = (session.*kRate)(shipment, kNoRequestCode);
        const auto* const found = std::get_if<Refusals>(&outcome);
        return found != nullptr ? Refuse(*found, shipment.id) : AnswerOf(std::get<0>(outcome));
    });
}

/// Rates the rows of a frame block by block; between two an interrupt ends it.
void RateRows(OneSession& one, const FrameRows& rows, RowColumns& columns) {
    const auto reader = MakeCsvReader(rows.Header(), {});
    const auto writer = MakeCsvForm({});
    for (std::size_t row = 0; row < rows.size();) {
        const Block block = rows.BlockFrom(row);
        const Answer answer = one.Use([&](Session& session) {
            const auto tell = [](std::uint32_t /*place*/) {};
            return RateBlock(session, {*reader, *writer}, block, {}, tell);
        });
        columns.Append(answer.bytes);
        row += block.lengths.size();
        if (PyErr_CheckSignals() != 0) throw py::error_already_set();
    }
}

/// The text of some rows from `begin` on, and how many they are.
std::pair<py::bytes, std::size_t> TextFrom(const FrameRows& rows, std::size_t begin) {
    const Block block = rows.BlockFrom(begin);
    return {block.text, block.lengths.size()};
}

/// For each column of a frame whether it is read; throws ValueError for names that cannot be relied
/// on.
std::vector<bool> ReadColumns(const std::vector<std::string>& names,
                              const std::vector<std::string>& allowed) {
    try {
        std::vector<bool> is_read;
        for (const ShipmentColumn* column : MatchColumns(names, allowed).columns) {
            is_read.push_back(column != nullptr);
        }
        return is_read;
    } catch (const std::runtime_error& error) {
        throw py::value_error(error.what());
    }
}

/// Ties the session to the life of the process: its end, and its forks.
void FollowProcess() {
    using namespace py::literals;
    py::module_::import("atexit").attr("register")(py::cpp_function(OneSession::CloseForGood));
    py::module_::import("os").attr("register_at_fork")(
        "before"_a = py::cpp_function(OneSession::BeforeFork),
        "after_in_parent"_a = py::cpp_function(OneSession::AfterForkInParent),
        "after_in_child"_a = py::cpp_function(OneSession::AfterForkInChild));
}

void BindSession(py::module_& module) {
    py::class_<OneSession>(module, "Session")
        .def(py::init([](const std::string& data, const std::string& set, const std::string& engine,
                         const std::string& service_guide) {
            return std::make_unique<OneSession>(SourcesOf(data, set, engine, service_guide));
        }))
        .def_property_readonly("data", &OneSession::data)
        .def_property_readonly("said", &OneSession::said)
        .def("rate", Rate<&Session::Rate>)
        .def("explain", Rate<&Session::Explain>)
        .def("rate_rows", RateRows)
        .def("close", &OneSession::Close);
}

void BindFrames(py::module_& module) {
    py::class_<FrameRows>(module, "FrameRows")
        .def(py::init<std::vector<std::string>, const std::vector<py::array>&, py::object>())
        .def_property_readonly("header",
                               [](const FrameRows& rows) { return py::bytes(rows.Header()); })
        .def("text_from", TextFrom);
    py::class_<RowColumns>(module, "RowColumns")
        .def(py::init<>())
        .def_property_readonly(
            "header", [](const RowColumns& columns) { return py::bytes(columns.header()); })
        .def_property_readonly("rows", &RowColumns::rows)
        .def_property_readonly("is_whole", &RowColumns::is_whole)
        .def("append", [](RowColumns& columns,
                          const py::bytes& text) { columns.Append(std::string_view(text)); })
        .def("take", &RowColumns::Take);
}

/// Looks at files while other threads run; throws Broken for a directory that cannot be read.
template <typename Look>
auto LookAt(const Look& look) {
    const OtherThreads others;
    try {
        return look();
    } catch (const std::filesystem::filesystem_error& error) {
        throw Broken(PathText(error.path1()) + ": " + error.code().message());
    }
}

/// Profiles that a rating converts are a change too: another host has them as they were.
void BindDataWatch(py::module_& module) {
    py::class_<DataWatch>(module, "DataWatch")
        .def(py::init([](const std::string& data, const std::string& set, const std::string& engine,
                         const std::string& service_guide) {
            return LookAt([&] {
                return std::make_unique<DataWatch>(SourcesOf(data, set, engine, service_guide),
                                                   false);
            });
        }))
        .def_property_readonly("files", &DataWatch::files)
        .def("change", [](DataWatch& watch) { return LookAt([&] { return watch.Change(); }); });
}

}  // namespace

PYBIND11_MODULE(_native, module) {
    CollectMessageBoxes();
    py::register_exception<Broken>(module, "Broken", PyExc_RuntimeError);
    py::register_exception<SessionInUse>(module, "SessionInUse", PyExc_RuntimeError);
    FollowProcess();
    BindSession(module);
    BindFrames(module);
    BindDataWatch(module);
    module.def("read_columns", ReadColumns);
    module.def("passed_names", PassedNames);
    module.def("find_data", [](const std::string& data, const std::string& set) {
        return PathText(SourcesOf(data, set, "", "").data);
    });
    module.attr("CWT") = HWT_FROM_PACKAGE_TO_CWT;
    module.attr("__version__") = HWT_VERSION;
}
