2850    H24     CAR-A Brelland         Brelland Radio, primary
2850    H24     CAR-A Brelland         Orlina Radio, secondary
2850    H24     CAR-A Brelland         Castlehill Radio, relay
3016    H24     NAT-A North Atlantic   Gander, Shanwick
3476    06-20   AFI-2 Kumasi           Kumasi, Tema
5598    H24     NAT-A North Atlantic   Gander, Shanwick, Reykholt
5598    H24     NAT-A North Atlantic   Santa Maria
6586    H24     CAR-A Brelland         Brelland Radio
8855    H24     NAT-B Tarnholm         Tarnholm, Bodvik
10000   H24     VOLMET Time            standard frequency, heard on the demo band
11690   06-14   MID-1 Jordanel         Al Karana, Bahrel
11690   06-14   MID-1 Jordanel         Jordanel Air, evenings
13288   H24     VOLMET Tarnholm        weather for Tarnholm
17946   H24     NAT World              Shanwick
