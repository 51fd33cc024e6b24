// How the text window changes its view; included by its sources only.
#pragma once

#include "qmtextctrl/QmTextCtrl.h"

constexpr UINT_PTR kTipTimer = 2;

template <typename Change> void CQmTextCtrl::Apply(Change change)
{
    if (!m_prepared)
        return;
    const textview::State before = m_view.CurrentState();
    change();
    ShowChange(before);
}

template <typename Change> void CQmTextCtrl::ApplyUser(Change change)
{
    const textview::State before = m_view.CurrentState();
    Apply(change);
    const textview::State& after = m_view.CurrentState();
    if (after.top != before.top || after.offset != before.offset)
        OnUserScroll(); // may destroy this object
}
