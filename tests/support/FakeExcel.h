#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "model/Excel.h"
#include "support/FakeScript.h"

namespace tessarine
{

/// The cells of a sheet by row and column, from 1. A cell that is not there is empty.
struct FakeSheet {
    std::map<std::pair<std::int32_t, std::int32_t>, excel::Value> cells{};
    std::int32_t columns = 0;  ///< What the used range answers; 0 for what the cells reach to.
    std::int32_t rows = 0;     ///< The same for rows.

    excel::Value At(std::int32_t row, std::int32_t column) const;
};

/// A stand-in for Excel, which is the process's while it lives: each path opens as a sheet of the test's, every member
/// of the surface can be made to fail or to give null, and what was done is written down in order, see FakeScript:
/// "CreateApplication", "Workbooks.Open a.xls", "Range.Value 2,1 = text", "Workbook.Close 2", "Application.Quit".
class FakeExcel
{
public:
    FakeExcel();
    ~FakeExcel();
    FakeExcel(const FakeExcel&) = delete;
    FakeExcel& operator=(const FakeExcel&) = delete;

    FakeScript script;

    /// Lets a path open as a workbook with this first sheet. Any other path fails to open with 1004.
    void Put(const String& path, const FakeSheet& sheet);

    /// The sheet that SaveAs stored under a path; an empty one when nothing was stored.
    FakeSheet Saved(const String& path) const;

    /// A member that hands out an object gives null from now on: "Workbooks.Open".
    void GiveNull(const std::string& member);

    /// Applications that have been started and not quit, and workbooks that have been opened or added and not closed.
    int Running() const;
    int Open() const;

    /// Applications, workbooks and sheets that somebody still refers to, closed or not.
    int Held() const;

    struct State;

private:
    std::shared_ptr<State> state_;
    std::shared_ptr<excel::Provider> previous_;
};

}  // namespace tessarine
