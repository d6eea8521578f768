// Plain text, each line of which ends in "..." where its place is too narrow, and with a shadow if one is wanted.
#pragma once

#include <QLabel>

namespace vorlix {

class ElidedLabel : public QLabel {
 public:
  explicit ElidedLabel(QWidget* parent);

  void Show(const QString& text, const QColor& color);
  // How far to the right and below, negative to the left and above; 0: none.
  void SetShadow(int distance);
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int shadow_ = 0;
};

}  // namespace vorlix
