; Tank levels as currents of 4 to 20 mA: below 3.6 mA a wire is broken (NAMUR NE 43), 21 mA and more are
; a fault of the sensor. "?AI01" is the module's answer to a command that it did not understand.
[Profile]
Format=plain

[Message Tanks]
Match.Field.0=>AI01*
Fuel.Raw=AdamVal(field(0), 0)
Fuel.Formula=(raw - 4) / 16 * 12.5
Fuel.Unit=m3
Fuel.Digits=2
Fuel.Error=-inf..3.6, 21..inf
Water.Raw=AdamVal(field(0), 1)
Water.Formula=(raw - 4) / 16 * 8
Water.Unit=m3
Water.Digits=2
Water.Error=-inf..3.6, 21..inf
Ballast.Raw=AdamVal(field(0), 2)
Ballast.Formula=(raw - 4) / 16 * 40
Ballast.Unit=m3
Ballast.Digits=2
Ballast.Error=-inf..3.6, 21..inf
Oil.Raw=AdamVal(field(0), 3)
Oil.Formula=(raw - 4) / 16 * 1.2
Oil.Unit=m3
Oil.Digits=3
Oil.Error=-inf..3.6, 21..inf
