#include "catalogue/pickers/attribute_text.h"

namespace qinghe {

QStringList attributeValues(const QString& text) {
  QStringList values = text.split(u',');
  values.removeLast();
  return values;
}

QString attributeText(const QStringList& values) {
  QString text;
  for (QString value : values) text += value.replace(u',', u';') + u',';
  return text;
}

}  // namespace qinghe
