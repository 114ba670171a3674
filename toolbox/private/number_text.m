function text = number_text (value)
% TEXT = number_text (VALUE): a number for a caption. Whole numbers are written whole, for areas have up to ten digits;
% others with four digits. In lower case, because the hosts write Inf and NaN.

% SPDX-License-Identifier: MIT

  if value == round (value) && abs (value) < 1e10
    text = sprintf ('%.0f', value);
  else
    text = lower (sprintf ('%.4g', value));
  end
end
