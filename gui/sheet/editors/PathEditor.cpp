#include "gui/sheet/editors/PathEditor.h"

#include "gui/sheet/Glyphs.h"
#include "gui/sheet/IPropertySheetHost.h"
#include "gui/sheet/SheetButton.h"
#include "gui/sheet/SkinColors.h"
#include "gui/sheet/editors/TextField.h"

#include <QEvent>
#include <QHBoxLayout>
#include <algorithm>
#include <filesystem>
#include <vector>

namespace tavrin::sheet {
namespace {

/// The files of the same kind in the file's folder, in order; none when they cannot be listed.
std::vector<Path> listSiblings(const Path& path) {
    std::vector<Path> siblings;
    std::error_code error;
    for (std::filesystem::directory_iterator file(path.parent().std(), error), end;
         !error && file != end; file.increment(error)) {
        if (file->path().extension() == path.std().extension() && file->is_regular_file(error)) {
            siblings.emplace_back(file->path());
        }
    }
    std::sort(siblings.begin(), siblings.end(),
              [](const Path& a, const Path& b) { return a.std() < b.std(); });
    return siblings;
}

}  // namespace

PathEditor::PathEditor(const EditorContext& context)
    : host_(context.host),
      field_(new TextField(this)),
      previous_(makeIconButton(Glyph::Previous, tr("Previous file in the folder"), this)),
      next_(makeIconButton(Glyph::Next, tr("Next file in the folder"), this)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    QToolButton* browse = makeIconButton(Glyph::Folder, tr("Choose a file"), this);
    field_->setPlaceholderText(tr("No file"));
    field_->installEventFilter(this);
    for (QWidget* part : std::initializer_list<QWidget*>{field_, previous_, next_, browse}) {
        layout->addWidget(part, part == field_ ? 1 : 0);
    }
    setFocusProxy(field_);
    connect(browse, &QToolButton::clicked, this, [this] { choose(); });
    connect(previous_, &QToolButton::clicked, this, [this] { step(-1); });
    connect(next_, &QToolButton::clicked, this, [this] { step(1); });
    connect(field_, &QLineEdit::editingFinished, this, [this] {
        if (field_->isModified()) {
            field_->setModified(false);
            take(Path(fromQt(field_->text().trimmed())));
        }
    });
    showPath();
}

void PathEditor::showValue(const Value& value) {
    path_ = *value.get<Path>();
    if (!field_->isModified()) {
        showPath();
    }
}

bool PathEditor::eventFilter(QObject* object, QEvent* event) {
    const bool isResult = PropertyEditor::eventFilter(object, event);
    // The name is what tells files apart, the path is what is typed.
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        QMetaObject::invokeMethod(
            this, [this] { showPath(); }, Qt::QueuedConnection);
    }
    return isResult;
}

void PathEditor::take(const Path& path) {
    path_ = path;
    showPath();
    tell(path);
}

void PathEditor::choose() {
    if (const Optional<Path> chosen =
            host_.chooseFile(u"Choose a file", path_, path_.extension())) {
        take(*chosen);
    }
}

void PathEditor::step(int offset) {
    const std::vector<Path> siblings = listSiblings(path_);
    const auto current = std::find(siblings.begin(), siblings.end(), path_);
    if (current == siblings.end() || siblings.size() < 2) {
        return;
    }
    const auto count = static_cast<std::ptrdiff_t>(siblings.size());
    const std::ptrdiff_t next = (current - siblings.begin() + offset + count) % count;
    take(siblings[static_cast<std::size_t>(next)]);
}

void PathEditor::showPath() {
    const QString text = toQt(field_->hasFocus() ? path_.native() : path_.fileName());
    if (!field_->isModified() && text != field_->text()) {
        field_->setText(text);
        field_->setCursorPosition(0);
    }
    field_->setToolTip(toQt(path_.native()));
    previous_->setEnabled(!path_.isEmpty());
    next_->setEnabled(!path_.isEmpty());
}

}  // namespace tavrin::sheet
