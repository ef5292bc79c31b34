#include "objectwriter/shape_script.h"

namespace ObjectWriter {

/// The inside is filled by upright strips a point wide. The outline is drawn twice, along x and along y,
/// since either way alone leaves gaps where it is steep.
const char kDrawEllipseScript[] = R"js(function drawEllipse(left,top,width,height,bw,bc,fc,opac)
{
	var cx = left + width / 2;
	var cy = top - height / 2;
	var a = width / 2;
	var b = height / 2;
	var x, y, w, aa, bb;
	function dot(x, y)
	{
		window.document.writeln("<div style='position:absolute;left:" + x + "pt;top:" + y +
			"pt;border:1pt solid;border-color:" + bc + "'></div>");
	}
	if (fc != "")
	{
		for (x = -a; x <= a; x += 1)
		{
			y = Math.sqrt(b * b * (1 - x * x / (a * a)));
			window.document.writeln("<div style='position:absolute;left:" + (x + cx) + "pt;top:" + (-y - cy) +
				"pt;width:1pt;height:" + (y * 2) + "pt;border:1pt solid;border-color:" + fc +
				";MozOpacity:" + opac + ";Opacity:" + opac + "'></div>");
		}
	}
	for (w = 0; w < bw - 0.5; w += 0.5)
	{
		aa = a - w;
		bb = b - w;
		for (x = -aa; x <= aa; x += 1)
		{
			y = Math.sqrt(bb * bb * (1 - x * x / (aa * aa)));
			dot(x + cx, y - cy);
			dot(x + cx, -y - cy);
		}
	}
	for (w = 0; w < bw - 0.5; w += 0.5)
	{
		aa = a - w;
		bb = b - w;
		for (y = -bb; y <= bb; y += 1)
		{
			x = Math.sqrt(aa * aa * (1 - y * y / (bb * bb)));
			dot(x + cx, y - cy);
			dot(-x + cx, -y - cy);
		}
	}
}
)js";

/// A stair of rectangles, each as long as the line stays in one row or column of pixels.
const char kDrawLineScript[] = R"js(function drawLine(X0,  X1, Y0, Y1, color, size)
{
	var ww = Math.abs(X1 - X0);
	var hh = Math.abs(Y1 - Y0);
	var ddir = (X1 > X0 && Y1 > Y0) || (X1 < X0 && Y1 < Y0);
	var ccr, cct, ccl, ccb;
	function box(left, top, width, height)
	{
		window.document.write("<div style='position:absolute;overflow:hidden;left:" + left + "px;top:" + top +
			"px;width:" + width + "px;height:" + height + "px;background-color:" + color + "'></div>");
	}
	if (ww == 0 || hh == 0)
	{
		box(0, 0, ww + size, hh + size);
	}
	else if (ww > hh)
	{
		ccr = 0;
		cct = 0;
		while (ccr < ww)
		{
			ccl = ccr;
			while (2 * ccr * hh <= (2 * cct + 1) * ww && ccr <= ww) ccr++;
			box(ddir ? ccl : ww - ccr, cct, ccr - ccl + size, size);
			cct++;
		}
	}
	else
	{
		ccb = 0;
		ccl = 0;
		while (ccb < hh)
		{
			cct = ccb;
			while (2 * ccb * ww <= (2 * ccl + 1) * hh && ccb < hh) ccb++;
			box(ddir ? ccl : ww - ccl, cct, size, ccb - cct + size);
			ccl++;
		}
	}
}
)js";

}  // namespace ObjectWriter
