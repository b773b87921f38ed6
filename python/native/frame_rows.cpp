#include "frame_rows.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "shipment/shipment_reader.h"
#include "text/csv.h"

namespace cwt {
namespace {

namespace py = pybind11;

constexpr std::size_t kMostRows = 1024;

/// A text with lone surrogates is passed on as what it is, no UTF-8, and its row refused.
std::string TextOfStr(py::handle value) {
    Py_ssize_t size = 0;
    const char* const bytes = PyUnicode_AsUTF8AndSize(value.ptr(), &size);
    if (bytes != nullptr) return {bytes, static_cast<std::size_t>(size)};
    PyErr_Clear();
    return py::cast<std::string>(value.attr("encode")("utf-8", "surrogatepass"));
}

/// The shortest text of the same number, "70.0".
std::string TextOfFloat(double number) {
    if (std::isnan(number)) return {};
    char* const text = PyOS_double_to_string(number, 'r', 0, Py_DTSF_ADD_DOT_0, nullptr);
    if (text == nullptr) throw py::error_already_set();
    std::string result = text;
    PyMem_Free(text);
    return result;
}

/// Numbers of numpy and of decimal, and the values that stand for none, by the names of their
/// types; false for anything else.
bool TextOfOther(py::handle value, std::string& text) {
    const auto type = py::cast<std::string>(py::type::handle_of(value).attr("__name__"));
    if (type == "NAType" || type == "NaTType") return true;
    const bool is_number = type == "Decimal" || type.starts_with("int") ||
                           type.starts_with("uint") || type.starts_with("float") || type == "bool_";
    if (!is_number) return false;
    // What is no number is unequal to itself, which Python asks of the same object by an operator
    // alone.
    const auto is_number_at_all =
        py::reinterpret_steal<py::object>(PyObject_RichCompare(value.ptr(), value.ptr(), Py_EQ));
    if (!is_number_at_all) throw py::error_already_set();
    if (py::cast<bool>(py::bool_(is_number_at_all))) text = py::cast<std::string>(py::str(value));
    return true;
}

/// The cell's text, empty for a value that is missing. False when it is none of a table's.
bool TextOf(py::handle value, std::string& text) {
    PyObject* const object = value.ptr();
    text.clear();
    if (value.is_none()) return true;
    if (PyUnicode_Check(object)) {
        text = TextOfStr(value);
    } else if (PyBool_Check(object)) {
        text = object == Py_True ? "TRUE" : "FALSE";
    } else if (PyLong_Check(object)) {
        text = py::cast<std::string>(py::str(value));
    } else if (PyFloat_Check(object)) {
        text = TextOfFloat(PyFloat_AS_DOUBLE(object));
    } else {
        return TextOfOther(value, text);
    }
    return true;
}

}  // namespace

FrameRows::FrameRows(std::vector<std::string> names, const std::vector<py::array>& columns,
                     py::object index)
    : index_(std::move(index)) {
    if (names.size() != columns.size() || names.empty()) {
        throw py::value_error("names and columns of a frame differ in number");
    }
    size_ = static_cast<std::size_t>(columns.front().size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        const py::array& cells = columns[i];
        if (cells.dtype().kind() != 'O' || cells.ndim() != 1 ||
            static_cast<std::size_t>(cells.size()) != size_) {
            throw py::type_error(fmt::format("the column \"{}\" is no list of values", names[i]));
        }
        columns_.push_back({std::move(names[i]), cells});
    }
}

std::string FrameRows::Header() const {
    std::string header;
    for (const FrameColumn& column : columns_) {
        if (!header.empty()) header += ',';
        AppendCsvField(header, column.name);
    }
    return header + '\n';
}

Block FrameRows::BlockFrom(std::size_t begin) const {
    Block block;
    block.first_row = begin + 1;
    const std::size_t end = std::min(begin + kMostRows, size_);
    std::string text;
    for (std::size_t row = begin; row < end; ++row) {
        const std::size_t start = block.text.size();
        for (const FrameColumn& column : columns_) {
            if (&column != &columns_.front()) block.text += ',';
            const auto* const cell =
                static_cast<PyObject* const*>(column.cells.data(static_cast<py::ssize_t>(row)));
            if (!TextOf(*cell, text)) {
                throw py::type_error(fmt::format(
                    "the column \"{}\" holds a {} in {}; texts, numbers and true or false are read",
                    column.name, Py_TYPE(*cell)->tp_name, PlaceOf(row)));
            }
            AppendCsvField(block.text, text);
        }
        block.text += '\n';
        if (block.text.size() - start > ShipmentReader::kLongestRow) RefuseLength(row);
        block.lengths.push_back(static_cast<std::uint32_t>(block.text.size() - start));
    }
    return block;
}

std::string FrameRows::PlaceOf(std::size_t row) const {
    return fmt::format("row {} (index {})", row + 1,
                       py::cast<std::string>(py::repr(index_[py::int_(row)])));
}

void FrameRows::RefuseLength(std::size_t row) const {
    const FrameColumn* longest = nullptr;
    std::size_t size = 0;
    std::string text;
    for (const FrameColumn& column : columns_) {
        TextOf(*static_cast<PyObject* const*>(column.cells.data(static_cast<py::ssize_t>(row))),
               text);
        if (longest == nullptr || text.size() > size) longest = &column;
        size = std::max(size, text.size());
    }
    throw py::value_error(
        fmt::format("the column \"{}\" holds {} bytes in {}; a row has at most 1 MiB",
                    longest->name, size, PlaceOf(row)));
}

}  // namespace cwt
