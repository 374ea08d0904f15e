#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "forms/ActiveForm.h"
#include "forms/EventGate.h"
#include "forms/FormRegistry.h"
#include "forms/Prompts.h"

namespace qinghe {

class Form;

/// What all forms share; one lives in the application state, and afresh in each test.
struct FormsState {
  FormsState();
  ~FormsState();
  FormsState(const FormsState&) = delete;
  FormsState& operator=(const FormsState&) = delete;

  QString productTitle;
  std::unique_ptr<Prompts> prompts;  ///< `DesktopPrompts` unless replaced
  EventGate gate;
  /// Puts a child form into the frame; without a frame a child is a plain window.
  std::function<void(Form&)> attachChild;
  ActiveForm activeForm{gate};
  FormRegistry registry;  ///< last: its forms go first

 private:
  FormsState* previous_;
};

/// The living one.
FormsState& formsState();

/// The living one, or null: for what may outlast it.
FormsState* livingFormsState();

}  // namespace qinghe
