// What the Python package asks of the host.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <nlohmann/json.hpp>
#include <tuple>
#include <utility>

#include "batch/data_watch.h"
#include "batch/rater.h"
#include "batch/verdict.h"
#include "frame_rows.h"
#include "one_session.h"
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

/// Calls back with one text after another: the header, and blocks of rows.
void WriteRows(const FrameRows& rows, const py::function& write) {
    write(py::bytes(rows.Header()));
    for (std::size_t row = 0; row < rows.size();) {
        const Block block = rows.BlockFrom(row);
        write(py::bytes(block.text));
        row += block.lengths.size();
    }
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
        .def(py::init<std::vector<std::string>, const std::vector<py::array>&>())
        .def("write", WriteRows);
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

}  // namespace

PYBIND11_MODULE(_native, module) {
    CollectMessageBoxes();
    py::register_exception<Broken>(module, "Broken", PyExc_RuntimeError);
    py::register_exception<SessionInUse>(module, "SessionInUse", PyExc_RuntimeError);
    BindSession(module);
    BindFrames(module);
    module.def("read_columns", ReadColumns);
    module.def("passed_names", PassedNames);
    module.def("find_data", [](const std::string& data, const std::string& set) {
        return PathText(SourcesOf(data, set, "", "").data);
    });
    module.def("data_files", [](const std::string& data, const std::string& set,
                                const std::string& engine, const std::string& service_guide) {
        const py::gil_scoped_release others;
        return DataWatch(SourcesOf(data, set, engine, service_guide)).files();
    });
    module.attr("CWT") = HWT_FROM_PACKAGE_TO_CWT;
    module.attr("__version__") = HWT_VERSION;
}
