#pragma once

#include <QHash>
#include <QLabel>
#include <QPushButton>
#include <functional>

#include "forms/Form.h"
#include "tools/CalculatorEngine.h"

namespace qinghe {

/// "计算器": the desk calculator. Every key of it has a key of the keyboard: digits, point (or
/// comma), + - * / % =, Enter for "=", Delete for CE, Esc for C.
class Calculator : public Form {
  Q_OBJECT

 public:
  Calculator();

  QLabel* Readout;

 protected:
  void onLoad() override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void addKey(const QString& name, const QString& caption, const std::function<void()>& press);
  void layOut();
  void operate(QChar key);
  void showReadout();
  /// The name of the calculator's key that a key of the keyboard stands for; empty for none.
  static QString keyFor(const QKeyEvent& event);

  CalculatorEngine engine_;
  QHash<QString, QPushButton*> keys_;
};

}  // namespace qinghe
