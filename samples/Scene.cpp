#include "samples/Scene.h"

#include "foundation/FatalError.h"
#include "samples/Fresnel.h"

namespace tavrin::samples {
namespace {

// What is left of light that goes straight through a shape of glass, wherever it crosses it.
Spectrum crossGlass(const Shape& shape, const Material& material, const Ray& ray, double farthest) {
    const bool thin = material.kind == Material::Kind::ThinGlass;
    Spectrum passed = Spectrum::gray(1);
    double from = Bvh::kNearest;
    while (const auto distance = intersect(shape, ray, from, farthest)) {
        const Vector normal = getSurfacePoint(shape, ray, *distance).normal;
        const double cosine = std::min(std::abs(dot(normal, ray.direction)), 1.0);
        passed *= thin ? material.color * (1 - fresnelThinWall(cosine, material.refractiveIndex))
                       : Spectrum::gray(1 - fresnelDielectric(cosine, material.refractiveIndex));
        from = *distance + Bvh::kNearest;
    }
    return passed;
}

}  // namespace

Bvh Scene::makeTree(const std::vector<Object>& objects) {
    std::vector<Shape> shapes;
    for (const Object& object : objects) {
        shapes.push_back(object.shape);
    }
    return Bvh(std::move(shapes));
}

Scene::Scene(std::vector<Object> objects, Options options)
    : options_(options), tree_(makeTree(objects)) {
    for (Object& object : objects) {
        materials_.push_back(std::move(object.material));
    }
    emitterOfShape_.resize(materials_.size());
    for (std::uint32_t i = 0; i < materials_.size(); ++i) {
        if (materials_[i].emits()) {
            addToLight(i);
        }
    }
}

void Scene::addToLight(std::uint32_t index) {
    const Material& material = materials_[index];
    const Shape& shape = tree_.getShape(index);
    if (!canEmit(shape)) {
        fatalError("only spheres, quads and cylinders emit light");
    }
    Light& light = lights_[static_cast<std::size_t>(material.light)];
    const double area = getArea(shape);
    const Bounds bounds = getBounds(shape);
    emitterOfShape_[index] = static_cast<std::uint32_t>(light.emitters.size());
    light.emitters.push_back({index, area, bounds.center(), bounds.getSize2() / 4});
    light.power += area * material.color.mean();
    light.bounds.include(bounds);
}

std::optional<Hit> Scene::intersect(const Ray& ray) const {
    const auto nearest = tree_.findNearest(ray);
    if (!nearest) {
        return std::nullopt;
    }
    return Hit{nearest->distance, nearest->shape, &materials_[nearest->shape],
               getSurfacePoint(tree_.getShape(nearest->shape), ray, nearest->distance)};
}

Spectrum Scene::getEmission(const Hit& hit, const Ray& ray) {
    if (dot(ray.direction, hit.point.geometricNormal) >= 0) {
        return {};
    }
    return hit.material->outside ? hit.material->outside(ray.direction) : hit.material->color;
}

std::optional<IncomingLight> Scene::sampleLight(int index, const Vector& lit,
                                                Sampler& sampler) const {
    const Light& light = lights_[static_cast<std::size_t>(index)];
    if (light.emitters.empty()) {
        return std::nullopt;
    }
    const double total = light.getReach(lit);
    double choice = sampler.next() * total;
    std::size_t i = 0;
    double reach = light.emitters[i].getReach(lit);
    while (choice >= reach && i + 1 < light.emitters.size()) {
        choice -= reach;
        reach = light.emitters[++i].getReach(lit);
    }
    const std::uint32_t shape = light.emitters[i].shape;
    auto sample = sampleEmitter(tree_.getShape(shape), lit, sampler.nextPoint());
    if (!sample) {
        return std::nullopt;
    }
    sample->pdf *= reach / total;
    const Material& material = materials_[shape];
    return IncomingLight{*sample,
                         material.outside ? material.outside(sample->direction) : material.color};
}

double Scene::getLightPdf(const Hit& hit, const Vector& lit) const {
    const Light& light = lights_[static_cast<std::size_t>(hit.material->light)];
    const Emitter& emitter = light.emitters[emitterOfShape_[hit.shape]];
    return emitter.getReach(lit) / light.getReach(lit) *
           getEmitterPdf(tree_.getShape(hit.shape), lit, hit.point);
}

PerLight<double> Scene::estimateLightShares(const Vector& lit) const {
    PerLight<double> shares{};
    double sum = 0;
    for (std::size_t i = 0; i < shares.size(); ++i) {
        const Light& light = lights_[i];
        if (light.power > 0) {
            const double distance2 = lengthSquared(light.bounds.center() - lit);
            shares[i] = light.power / (distance2 + light.bounds.getSize2() / 4);
            sum += shares[i];
        }
    }
    if (sum > 0) {
        for (double& share : shares) {
            share /= sum;
        }
    }
    return shares;
}

Spectrum Scene::getTransmittance(const Ray& ray, double distance, int light) const {
    const bool throughGlass = options_.withoutCaustics[static_cast<std::size_t>(light)];
    Spectrum passed = Spectrum::gray(1);
    tree_.visitHits(ray, distance, [&](std::uint32_t index) {
        const Material& material = materials_[index];
        const bool thin = material.kind == Material::Kind::ThinGlass;
        if (!thin && !(throughGlass && material.kind == Material::Kind::Glass)) {
            passed = {};
            return false;
        }
        passed *= crossGlass(tree_.getShape(index), material, ray, distance);
        return true;
    });
    return passed;
}

}  // namespace tavrin::samples
