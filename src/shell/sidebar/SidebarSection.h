#pragma once

#include <QWidget>

class QAbstractButton;
class QHBoxLayout;

namespace orvanlite {

class Glide;
class SidebarButton;
class SectionBody;

/// A part of the sidebar with a header that opens and closes it. A closed body is hidden, so Tab skips it.
class SidebarSection final : public QWidget {
    Q_OBJECT

public:
    /// Its object name is `identity` + "Section", that of its header `identity` + "Header".
    SidebarSection(const QString& title, const QString& identity, QWidget* parent);

    void setBody(QWidget* body);
    /// Lets the open body shrink to its minimum height if space is short.
    void setShrinkable();
    /// A small button at the end of the header's row.
    void addHeaderButton(QAbstractButton* button);
    /// The count in the header; empty for none.
    void setCount(const QString& count);

    /// An animated change takes 0.2 s.
    void setOpen(bool isOpen, bool isAnimated);
    [[nodiscard]] bool isOpen() const;
    [[nodiscard]] QAbstractButton* header() const;

Q_SIGNALS:
    /// The user has opened it.
    void opened();

private:
    void showExtent();

    SidebarButton* m_header;
    QHBoxLayout* m_headerRow;
    SectionBody* m_body;
    Glide* m_extent;
};

} // namespace orvanlite
