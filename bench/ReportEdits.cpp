#include "ReportEdits.h"

#include "BenchFiles.h"

#include "mfc/Controls.h"

namespace bench
{

namespace
{

constexpr UINT kFieldId = 77;
constexpr int kRow = 3;

// Not the paint messages.
void Dispatch(HWND window)
{
    MSG message = {};
    while (::PeekMessageA(&message, window, WM_CLOSE, WM_CLOSE, PM_REMOVE))
        ::DispatchMessageA(&message);
}

void EditCell(ReportList& list)
{
    Check(static_cast<CReportCtrl&>(list).BeginEdit(kRow, 1, RVEK_MOUSE) == 1, "an edit");
    const HWND editor = ::GetFocus();
    ::SetFocus(list);
    Dispatch(editor);
    Check(!::IsWindow(editor), "the end of an edit");
}

void MakeField(ReportList& list, const std::string& text)
{
    CRect cell;
    list.GetRowRect(kRow, 1, cell, RVRC_EDIT);
    CEdit field;
    field.Create(WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, cell, &list, kFieldId);
    field.SetWindowText(text.c_str());
    ::SetFocus(field);
    ::SetFocus(list);
    field.DestroyWindow();
}

} // namespace

Measure MeasureEdit(ReportList& list, const Options& options)
{
    const unsigned times = options.quick ? 10 : 100;
    const std::string text = list.GetItemText(kRow, 1).c_str();
    ::SetForegroundWindow(::GetParent(list));
    ::SetFocus(list);
    const auto repeat = [times](auto action) {
        return Variant{times, [times, action] {
                           for (unsigned i = 0; i < times; ++i)
                               action();
                       }};
    };
    const Comparison comparison({repeat([&] { MakeField(list, text); }), repeat([&] { EditCell(list); })},
                                options.quick ? 3 : 51);
    return {"begin and end an edit",      comparison.Time(1),  "us",
            "a field made and destroyed", comparison.Ratio(1), 1.5};
}

} // namespace bench
