#include "account/registration/frmGetAREA.h"

#include "shell/AppState.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

frmGetAREA::frmGetAREA()
    : ReferencePicker({.form = u"frmGetAREA"_s,
                       .caption = u"选择地区"_s,
                       .idBox = u"TextArea_id"_s,
                       .nameBox = u"TextArea"_s,
                       .table = u"AREA"_s,
                       .fields = u"id,area,"_s,
                       .condition = [] { return u"SHEN_ID="_s + textOf(app().gShenId); }}),
      TextArea_id(idBox()),
      TextArea(nameBox()) {}

}  // namespace qinghe
