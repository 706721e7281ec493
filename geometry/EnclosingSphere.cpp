#include "geometry/EnclosingSphere.h"

#include "geometry/BoundingSphere.h"

#include <cmath>
#include <cstring>
#include <vector>

namespace vqm
{

namespace
{

struct Point
{
	float x[3];
};

inline float dot3(const float a[3], const float b[3])
{
	return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline float distanceSquared(const float a[3], const float b[3])
{
	const float d[3] = {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
	return dot3(d, d);
}

// The ball of the support stack: up to four points on its boundary.
struct SupportBall
{
	float q0[3] = {0, 0, 0};
	float v[4][3] = {};
	float a[4][4] = {};
	float z[4] = {};
	float f[4] = {};
	float c[4][3] = {};
	float r2[4] = {};
	float currentCenter[3] = {0.0f, 0.0f, 0.0f};
	float currentR2 = -1.0f;
	int m = 0;

	float excess(const float p[3]) const
	{
		return distanceSquared(p, currentCenter) - currentR2;
	}

	bool push(const float p[3])
	{
		if (m >= 4)
			return false;

		if (m == 0)
		{
			memcpy(q0, p, sizeof(q0));
			memcpy(c[0], p, sizeof(c[0]));
			r2[0] = 0.0f;
		}
		else
		{
			float* vm = v[m];
			for (int k = 0; k < 3; ++k)
				vm[k] = p[k] - q0[k];
			for (int i = 1; i < m; ++i)
				a[m][i] = (2.0f / z[i]) * dot3(v[i], vm);
			for (int i = 1; i < m; ++i)
				for (int k = 0; k < 3; ++k)
					vm[k] -= a[m][i] * v[i][k];

			z[m] = 2.0f * dot3(vm, vm);
			// a point (nearly) in the affine hull of the support adds nothing
			if (!(z[m] >= currentR2 * 1e-30f))
				return false;

			const float e = distanceSquared(p, c[m - 1]) - r2[m - 1];
			f[m] = e / z[m];
			for (int k = 0; k < 3; ++k)
				c[m][k] = c[m - 1][k] + f[m] * vm[k];
			r2[m] = r2[m - 1] + e * f[m] * 0.5f;
		}

		memcpy(currentCenter, c[m], sizeof(currentCenter));
		currentR2 = r2[m];
		++m;
		return true;
	}
};

constexpr int kEnd = -1;

// Doubly linked list of points kept in one array; kEnd is the position behind the last node.
struct PointList
{
	struct Node
	{
		Point point;
		int prev;
		int next;
	};

	std::vector<Node> nodes;
	int head = kEnd;
	int tail = kEnd;

	void unlink(int node)
	{
		Node& n = nodes[node];
		if (n.prev != kEnd)
			nodes[n.prev].next = n.next;
		else
			head = n.next;
		if (n.next != kEnd)
			nodes[n.next].prev = n.prev;
		else
			tail = n.prev;
	}

	void linkFront(int node)
	{
		nodes[node].prev = kEnd;
		nodes[node].next = head;
		if (head != kEnd)
			nodes[head].prev = node;
		else
			tail = node;
		head = node;
	}

	void pushFront(const Point& p)
	{
		nodes.push_back(Node{p, kEnd, kEnd});
		linkFront(int(nodes.size() - 1));
	}

	int previous(int node) const
	{
		return node == kEnd ? tail : nodes[node].prev;
	}
};

struct SphereSearch
{
	SupportBall ball;
	PointList list;
	int supportEnd = kEnd;

	void moveToFront(int node)
	{
		if (supportEnd == node)
			supportEnd = list.nodes[node].next;
		list.unlink(node);
		list.linkFront(node);
	}

	// Recursion depth is bounded by the four support levels.
	void moveToFrontBall(int end)
	{
		supportEnd = list.head;
		if (ball.m == 4)
			return;

		for (int k = list.head; k != end;)
		{
			const int node = k;
			k = list.nodes[node].next;
			if (ball.excess(list.nodes[node].point.x) > 0.0f && ball.push(list.nodes[node].point.x))
			{
				moveToFrontBall(node);
				--ball.m;
				moveToFront(node);
			}
		}
	}

	bool supportHolds(const Point& p) const
	{
		for (int k = list.head; k != supportEnd; k = list.nodes[k].next)
		{
			const float* q = list.nodes[k].point.x;
			if (q[0] == p.x[0] && q[1] == p.x[1] && q[2] == p.x[2])
				return true;
		}
		return false;
	}
};

} // namespace

std::unique_ptr<BoundingSphere> createEnclosingSphere(const float* points, uint32_t count, size_t stride)
{
	std::unique_ptr<BoundingSphere> sphere(new BoundingSphere);
	if (count == 0 || !points)
		return sphere;
	if (stride == 0)
		stride = 3 * sizeof(float);

	const unsigned char* bytes = reinterpret_cast<const unsigned char*>(points);
	auto pointAt = [&](uint32_t i) {
		Point p;
		memcpy(p.x, bytes + size_t(i) * stride, sizeof(p.x));
		return p;
	};

	SphereSearch search;
	for (;;)
	{
		const float old = search.ball.currentR2;

		bool found = false;
		Point pivot{};
		float largest = 0.0f;
		for (uint32_t i = 0; i < count; ++i)
		{
			const Point p = pointAt(i);
			const float e = search.ball.excess(p.x);
			if (e > largest)
			{
				largest = e;
				pivot = p;
				found = true;
			}
		}

		if (found && !search.supportHolds(pivot) && search.ball.push(pivot.x))
		{
			search.moveToFrontBall(search.supportEnd);
			--search.ball.m;
			search.list.pushFront(pivot);

			int before = 0;
			for (int k = search.list.head; k != search.supportEnd; k = search.list.nodes[k].next)
				++before;
			if (before == 5)
				search.supportEnd = search.list.previous(search.supportEnd);
		}

		// Written as "not grown" so that a NaN radius also ends the search.
		if (!(search.ball.currentR2 > old))
			break;
	}

	memcpy(sphere->center, search.ball.currentCenter, sizeof(sphere->center));
	// no point accepted at all (all NaN) leaves the start value -1
	sphere->radius = search.ball.currentR2 < 0.0f ? 0.0f : sqrtf(search.ball.currentR2);
	return sphere;
}

} // namespace vqm
