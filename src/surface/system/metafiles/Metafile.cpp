#include "surface/system/metafiles/Metafile.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "surface/system/metafiles/RecordTables.h"

namespace zelvane {

namespace {

constexpr double kDotsPerInch = 96, kMmPerInch = 25.4;
constexpr double kPixelsPerMm = kDotsPerInch / kMmPerInch;

/// How a metafile's records are played.
struct Plan {
  RecordWalk records;
  /// Where a record's fields begin.
  uint64_t fields_at;
  RecordRoutine (*routine)(uint32_t);
  int width, height;
  Mapping mapping;
};

/// To the nearest, at least one.
int Pixels(double length) {
  return static_cast<int>(std::clamp(std::floor(length + 0.5), 1.0, 1.0 + kLargestSide));
}

/// The person has given the reading up.
struct GivenUp {};

void Play(const Plan& plan, Sheet& sheet, SizeLimit limit, ReadingWatch& watch) {
  constexpr double kWorkOfRecord = 200, kWorkOfFault = 5000;
  Player player(sheet, plan.mapping, limit);
  RecordWalk records = plan.records;
  RecordRoutine last = nullptr;
  while (const auto record = records.Next()) {
    if (!watch.GoOn(records.BytesDone(), records.AllBytes())) throw GivenUp();
    sheet.Charge(kWorkOfRecord);
    const RecordRoutine play = plan.routine(record->type);
    if (!play) continue;
    if (play != last) player.Settle();
    last = play;
    try {
      play(player, Fields(record->bytes, plan.fields_at));
    } catch (const RecordFault&) {
      sheet.Charge(kWorkOfFault);
    }
  }
  player.Settle();
}

/// Every record lies within the file, and one marks the end.
bool IsWhole(RecordWalk records) {
  while (records.Next()) continue;
  return records.ReachedEnd();
}

// 16 bits

constexpr uint64_t kWmfFields = 6;

/// What the records tell first of the window and the device.
struct WmfView {
  QPointF origin;
  std::optional<QSizeF> extent, device;
};

WmfView FindView(RecordWalk records) {
  constexpr uint32_t kWindowOrigin = 0x020B, kWindowExtent = 0x020C, kViewportExtent = 0x020E;
  WmfView view;
  bool has_origin = false;
  while (const auto record = records.Next()) {
    const double y = static_cast<int16_t>(record->bytes.Little16(kWmfFields));
    const double x = static_cast<int16_t>(record->bytes.Little16(kWmfFields + 2));
    if (record->type == kWindowOrigin && !has_origin) {
      view.origin = {x, y};
      has_origin = true;
    }
    if (x == 0 || y == 0) continue;
    if (record->type == kWindowExtent && !view.extent) view.extent = QSizeF(x, y);
    if (record->type == kViewportExtent && !view.device) view.device = QSizeF(std::abs(x), std::abs(y));
  }
  return view;
}

/// The whole window on the whole sheet, until records tell something else. A device that they tell the size
/// of comes to cover the sheet.
Mapping ShowWindow(QPointF origin, QSizeF extent, const WmfView& view, QSizeF sheet) {
  const QSizeF device = view.device.value_or(sheet);
  Mapping mapping(QTransform::fromScale(sheet.width() / device.width(), sheet.height() / device.height()),
                  {kPixelsPerMm, kPixelsPerMm});
  mapping.SetMode(MapMode::Anisotropic);
  mapping.SetViewportExtent(device);
  mapping.SetWindowExtent(extent);
  mapping.SetWindowOrigin(origin);
  return mapping;
}

/// Pixels in a unit, where nothing tells it.
double GuessedScale(QSizeF extent) {
  constexpr double kMostPixels = 4096, kTwipsPerInch = 1440;
  const bool twips = std::max(std::abs(extent.width()), std::abs(extent.height())) > kMostPixels;
  return twips ? kDotsPerInch / kTwipsPerInch : 1;
}

std::optional<Plan> PlanByDrawing(Plan plan, SizeLimit limit, ReadingWatch& watch) {
  Sheet measure(static_cast<size_t>(plan.records.AllBytes()));
  Play(plan, measure, limit, watch);
  const QRectF drawn = measure.Extent();
  if (drawn.width() <= 0 && drawn.height() <= 0) return std::nullopt;
  const double scale = GuessedScale(drawn.size());
  plan.width = Pixels(drawn.width() * scale);
  plan.height = Pixels(drawn.height() * scale);
  plan.mapping =
      Mapping(QTransform::fromTranslate(-drawn.left(), -drawn.top()) * QTransform::fromScale(scale, scale),
              {kPixelsPerMm, kPixelsPerMm});
  plan.mapping.SetMode(MapMode::Anisotropic);
  return plan;
}

std::optional<Plan> PlanWmf(ByteView bytes, SizeLimit limit, ReadingWatch& watch) {
  const auto header = ReadWmfHeader(bytes);
  if (!header) return std::nullopt;
  const RecordWalk records(RecordWalk::Kind::Wmf, bytes, header->end);
  if (!IsWhole(records)) return std::nullopt;
  const Mapping plain({}, {kPixelsPerMm, kPixelsPerMm});
  Plan plan{records, kWmfFields, WmfRoutine, 0, 0, plain};
  const WmfView view = FindView(records);
  QPointF origin = view.origin;
  QSizeF extent = view.extent.value_or(QSizeF());
  double scale = GuessedScale(extent);
  if (header->box) {
    origin = {double{1} * header->box->left, double{1} * header->box->top};
    extent = {double{1} * header->box->Width(), double{1} * header->box->Height()};
    scale = kDotsPerInch / header->units_per_inch;
    if (extent.width() == 0 || extent.height() == 0) return std::nullopt;
  } else if (!view.extent) {
    plan.mapping.SetMode(MapMode::Anisotropic);
    return PlanByDrawing(plan, limit, watch);
  }
  plan.width = Pixels(std::abs(extent.width()) * scale);
  plan.height = Pixels(std::abs(extent.height()) * scale);
  plan.mapping = ShowWindow(origin, extent, view, QSizeF(plan.width, plan.height));
  return plan;
}

// 32 bits

std::optional<Plan> PlanEmf(ByteView bytes) {
  constexpr uint64_t kFields = 8;
  const auto header = ReadEmfHeader(bytes);
  const RecordWalk records(RecordWalk::Kind::Emf, bytes, 0);
  if (!header || !IsWhole(records)) return std::nullopt;
  const double across = header->pixels_per_mm_x, down = header->pixels_per_mm_y;
  constexpr double kUnitsPerMm = 100;
  // What is shown, in pixels of the device.
  QRectF shown(header->frame.left * across / kUnitsPerMm, header->frame.top * down / kUnitsPerMm,
               static_cast<double>(header->frame.Width()) * across / kUnitsPerMm,
               static_cast<double>(header->frame.Height()) * down / kUnitsPerMm);
  if (shown.width() <= 0 || shown.height() <= 0) {
    shown = QRectF(header->bounds.left, header->bounds.top, static_cast<double>(header->bounds.Width() + 1),
                   static_cast<double>(header->bounds.Height() + 1));
  }
  if (shown.width() <= 0 || shown.height() <= 0) return std::nullopt;
  const int width = Pixels(shown.width() / across * kPixelsPerMm);
  const int height = Pixels(shown.height() / down * kPixelsPerMm);
  const QTransform to_sheet = QTransform::fromTranslate(-shown.left(), -shown.top()) *
                              QTransform::fromScale(width / shown.width(), height / shown.height());
  return Plan{records, kFields, EmfRoutine, width, height, Mapping(to_sheet, {across, down})};
}

}  // namespace

bool LooksLikeMetafile(ByteView start) {
  return LooksLikeEmf(start) || ReadWmfHeader(start).has_value();
}

std::optional<DecodedPicture> DecodeMetafile(ByteView bytes, SizeLimit limit, ReadingWatch& watch) {
  try {
    const auto plan = LooksLikeEmf(bytes) ? PlanEmf(bytes) : PlanWmf(bytes, limit, watch);
    if (!plan || !limit.Admits(plan->width, plan->height)) return std::nullopt;
    Bitmap picture(plan->width, plan->height, 0xFFFFFFFFu);
    {
      Sheet sheet(picture, bytes.Size());
      Play(*plan, sheet, limit, watch);
    }
    return picture;
  } catch (const GivenUp&) {
  } catch (const TooMuchWork&) {
  } catch (const SurfaceTooLarge&) {
  } catch (const std::bad_alloc&) {
  }
  return std::nullopt;
}

}  // namespace zelvane
