#include <utility>
#include <vector>

#include "geometryAlgo/VedaType/LABHPolygon.h"
#include "geometryAlgo/VedaType/LABPolyline.h"

namespace tarnalgo {

namespace {

/// Smooths all chains, or none when something raises.
void SmoothAll(const std::vector<TLABPolyline*>& Chains, double Eps) {
  std::vector<TLABPolyline> Smoothed;
  Smoothed.reserve(Chains.size());
  for (const TLABPolyline* Chain : Chains) {
    Smoothed.push_back(*Chain);
    Smoothed.back().CollinearSmooth(Eps);
  }
  for (std::size_t I = 0; I < Chains.size(); ++I) *Chains[I] = std::move(Smoothed[I]);
}

}  // namespace

void TLABPolylineList::CollinearSmooth(double Eps) {
  SmoothAll({begin(), end()}, Eps);
}

void TLABHPolygonList::CollinearSmooth(double Eps) {
  std::vector<TLABPolyline*> Chains;
  for (const TLABHPolygon* Item : *this) Chains.insert(Chains.end(), Item->begin(), Item->end());
  SmoothAll(Chains, Eps);
}

void TLABPolylineList::WriteToFile(const std::string& FileName, std::string_view Colour) const {
  std::string Text;
  for (const TLABPolyline* Chain : *this) Text += Chain->ToString(Colour);
  WriteDebugFile("TLABPolylineList.WriteToFile", FileName, Text);
}

}  // namespace tarnalgo
