#include "forms/FormsState.h"

#include "forms/Form.h"

namespace qinghe {

namespace {

FormsState* living = nullptr;

}  // namespace

FormsState::FormsState() : prompts(std::make_unique<DesktopPrompts>()), previous_(living) {
  living = this;
}

FormsState::~FormsState() {
  registry.clear();  // while forms can still reach their state
  living = previous_;
}

FormsState& formsState() {
  if (living == nullptr) qFatal("no forms state is alive");
  return *living;
}

FormsState* livingFormsState() {
  return living;
}

}  // namespace qinghe
