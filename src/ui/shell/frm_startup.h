#pragma once
// The small window shown while the program starts.

#include <QWidget>

class frm_Startup : public QWidget {
    Q_OBJECT
public:
    explicit frm_Startup(QWidget* parent = nullptr);
};
