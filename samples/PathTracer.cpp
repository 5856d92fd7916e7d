#include "samples/PathTracer.h"

namespace tavrin::samples {
namespace {

constexpr int kMaxSegments = 40;
constexpr int kRouletteStart = 3;  ///< scattering events before a path may be ended early
// Highlights that light surfaces which are not seen directly are widened to this roughness, because
// narrow ones are found too rarely (path regularisation, Kaplanyan and Dachsbacher 2013).
constexpr double kIndirectRoughness = 0.35;
constexpr double kShadowMargin = 1e-5;  ///< decimetres; the light's own surface casts no shadow

double powerHeuristic(double pdf, double other) {
    const double ratio = other / pdf;
    return 1 / (1 + ratio * ratio);
}

}  // namespace

/// A path on its way from the camera.
struct PathTracer::Path {
    Path(const Ray& cameraRay, Sampler& numbers) : ray(cameraRay), sampler(numbers) {}

    Ray ray;
    Sampler& sampler;
    PathSample result;
    Spectrum throughput = Spectrum::gray(1);
    Vector lit;                      ///< the last point that light was sampled for
    PerLight<double> lightShares{};  ///< probability of each light's being sampled there
    double directionPdf = 0;         ///< of the direction since then; 0 after the camera or glass
    int scatterings = 0;             ///< off surfaces that light was sampled for
    bool caustic = false;            ///< a mirror direction came after such a surface
    bool albedoKnown = false;
};

PathSample PathTracer::trace(Pixel pixel, Sampler& sampler) const {
    Path path(camera_.makeRay(pixel, sampler), sampler);
    for (int segment = 0; segment < kMaxSegments; ++segment) {
        ++path.result.rays;
        const auto hit = scene_.intersect(path.ray);
        if (!hit) {
            addSurroundings(path);
            break;
        }
        if (segment == 0) {
            recordFirstHit(*hit, path);
        }
        if (hit->material->emits()) {
            addEmission(*hit, path);
            break;
        }
        const Bsdf bsdf(*hit->material, hit->point, -path.ray.direction,
                        path.scatterings > 0 ? kIndirectRoughness : 0);
        if (hit->material->kind == Material::Kind::Glass &&
            dot(path.ray.direction, hit->point.geometricNormal) > 0) {
            path.throughput *= absorb(hit->material->absorption, hit->distance);
        }
        if (!bsdf.isSpecular()) {
            if (!path.albedoKnown) {
                path.albedoKnown = true;
                path.result.albedo = bsdf.getAlbedo();
            }
            addLights(*hit, bsdf, path);
        }
        if (!scatter(*hit, bsdf, path)) {
            break;
        }
    }
    return path.result;
}

void PathTracer::recordFirstHit(const Hit& hit, Path& path) const {
    path.result.covered = true;
    if (hit.material->kind == Material::Kind::Opening) {
        return;
    }
    path.result.hit = true;
    path.result.depth = camera_.getDepth(hit.point.position);
    path.result.maskChannel = hit.material->maskChannel;
    const bool back = dot(path.ray.direction, hit.point.geometricNormal) > 0;
    path.result.normal = camera_.toCameraSpace(back ? -hit.point.normal : hit.point.normal);
}

void PathTracer::addEmission(const Hit& hit, Path& path) const {
    const Spectrum emission = Scene::getEmission(hit, path.ray);
    const Material& material = *hit.material;
    if (!path.albedoKnown && material.kind == Material::Kind::Emitter) {
        path.result.albedo = emission * (1 / std::max(1.0, emission.max()));
    }
    const auto light = static_cast<std::size_t>(material.light);
    if (emission.isBlack() || (path.caustic && scene_.getOptions().withoutCaustics[light])) {
        return;
    }
    double weight = 1;
    if (path.directionPdf > 0) {
        const double lightPdf = path.lightShares[light] * scene_.getLightPdf(hit, path.lit);
        weight = powerHeuristic(path.directionPdf, lightPdf);
    }
    path.result.radiance[light] += path.throughput * emission * weight;
}

void PathTracer::addSurroundings(Path& path) const {
    path.result.radiance[kWindowLight] += path.throughput * scene_.getOptions().surroundings;
}

// The first surface is lit by every light; later ones by one light that is chosen by its estimated
// share.
void PathTracer::addLights(const Hit& hit, const Bsdf& bsdf, Path& path) const {
    if (path.scatterings == 0) {
        path.lightShares.fill(1);
        for (int light = 0; light < kLightCount; ++light) {
            addLight(light, hit, bsdf, path);
        }
        return;
    }
    path.lightShares = scene_.estimateLightShares(hit.point.position);
    double choice = path.sampler.next();
    for (int light = 0; light < kLightCount; ++light) {
        const double share = path.lightShares[static_cast<std::size_t>(light)];
        if (choice < share) {
            addLight(light, hit, bsdf, path);
            return;
        }
        choice -= share;
    }
}

void PathTracer::addLight(int light, const Hit& hit, const Bsdf& bsdf, Path& path) const {
    const auto incoming = scene_.sampleLight(light, hit.point.position, path.sampler);
    if (!incoming) {
        return;
    }
    const Bsdf::Value value = bsdf.evaluate(incoming->sample.direction);
    if (value.weighted.isBlack()) {
        return;
    }
    ++path.result.rays;
    const Spectrum passed =
        scene_.getTransmittance({hit.point.position, incoming->sample.direction},
                                incoming->sample.distance - kShadowMargin, light);
    const auto index = static_cast<std::size_t>(light);
    const double pdf = incoming->sample.pdf * path.lightShares[index];
    path.result.radiance[index] += path.throughput * value.weighted * incoming->radiance * passed *
                                   (powerHeuristic(pdf, value.pdf) / pdf);
}

// Continues the path, or ends it: where the surface absorbs, or by chance (Russian roulette, Arvo
// and Kirk 1990).
bool PathTracer::scatter(const Hit& hit, const Bsdf& bsdf, Path& path) const {
    const auto sample = bsdf.sample(path.sampler);
    if (!sample) {
        return false;
    }
    path.throughput *= sample->throughput;
    path.ray = {hit.point.position, sample->direction};
    if (sample->crosses) {
        return true;  // as if nothing had been there: the light beyond was sampled before
    }
    path.directionPdf = sample->pdf;
    if (sample->pdf == 0) {
        path.caustic = path.scatterings > 0;
        return true;
    }
    path.lit = hit.point.position;
    path.caustic = false;
    if (++path.scatterings < kRouletteStart) {
        return true;
    }
    const double survival = std::min(0.95, path.throughput.max());
    if (path.sampler.next() >= survival) {
        return false;
    }
    path.throughput *= 1 / survival;
    return true;
}

}  // namespace tavrin::samples
