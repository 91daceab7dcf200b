// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>

/// A latching button made of three images, given as resource paths. While selected it shows the
/// selected image; otherwise the normal one, and the selected one only under the mouse.
class CustomButton : public QPushButton
{
    Q_OBJECT

public:
    /// Not selected at first; each click turns the selection over.
    CustomButton(const QString &normalImage, const QString &selectedImage, const QString &disabledImage,
                 QWidget *parent = nullptr);
    /// A button without images, which clicks do not turn over.
    explicit CustomButton(QWidget *parent = nullptr);

    /// Shows the state; emits nothing.
    void setSeleted(bool selected);
    bool isSelected() const { return m_selected; }

private:
    bool m_selected = false;
    QString m_normalImage;
    QString m_selectedImage;
    QString m_disabledImage;
};
