#include "shell/modal.h"

#include "forms/Form.h"
#include "shell/Tray.h"
#include "shell/ras.h"

namespace qinghe {

void showModalWaiting(Form& form) {
  TrayShowWaiting();
  form.showModal();
  CheckConnection();
}

}  // namespace qinghe
