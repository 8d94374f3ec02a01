#include "toolkit/switch_rules.h"

namespace switching {

namespace {

bool same(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

}  // namespace

Decision decide(const QString& me, const QString& target, bool no_return, const QString& return_form,
                const QString& main_menu)
{
    if (target.isEmpty()) {
        if (return_form.isEmpty() || same(return_form, main_menu) || same(return_form, me))
            return {Show::Main_Menu, Remember::Nothing, Leave::Unload};
        return {Show::Return_Form, Remember::Keep, Leave::Unload};
    }
    if (same(target, main_menu))
        return {Show::Main_Menu, Remember::Nothing, Leave::Unload};
    if (no_return)
        return {Show::Target, Remember::Nothing, Leave::Unload};
    if (return_form.isEmpty())
        return {Show::Target, Remember::Target, Leave::Hide};
    if (!same(return_form, target))
        return {Show::Target, Remember::Me, Leave::Hide};
    return {Show::Target, Remember::Nothing, Leave::Unload};
}

}  // namespace switching
