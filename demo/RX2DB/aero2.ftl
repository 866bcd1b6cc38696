2850            CAR-A Brelland        
3016            NAT-A North Atlantic  
3476            AFI-2 Kumasi          
5598            NAT-A North Atlantic  
6586            CAR-A Brelland        
8855            NAT-B Tarnholm        
10000           VOLMET Time           
11690           MID-1 Jordanel        
13288           VOLMET Tarnholm       
17946           NAT World             
